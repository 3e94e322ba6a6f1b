#include "revision/ScenePairing.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

#include "revision/Likeness.h"

namespace zonstoryparser {

namespace {

constexpr std::size_t kNone = ScenePairs::kNone;

// What two scenes have in common, where numbers say nothing, before they are taken for one. The generator of drafts that
// docs/revisions.md describes set these figures: two scenes of one story share a fifth at most, a scene and its rewriting
// more than half.
constexpr double kAlike = 0.38;
constexpr double kAlikeInPlace = 0.1; // with one heading, between the same neighbours
constexpr double kAsAlike = 0.02;     // less of a difference says nothing
// Where numbers say something, what the texts have to say against it.
constexpr double kSureOfNumber = 0.5;
constexpr double kAgainstNumber = 0.45;
constexpr double kMoreThanNumber = 0.2;

struct Edge {
    std::size_t oldIndex, newIndex;
    double likeness;
};

// Each scene has a number that no other has; one without stands in front at the most: what precedes the first heading.
bool IsNumbered(const std::vector<DraftScene>& draft) {
    std::set<std::u16string_view> numbers;
    std::size_t without = 0;
    for (const DraftScene& scene : draft) {
        without += scene.number.empty() ? 1 : 0;
        if (!scene.number.empty() && !numbers.insert(scene.number).second) {
            return false;
        }
    }
    return without <= 1 && !numbers.empty();
}

class Pairing {
public:
    Pairing(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft, std::size_t wordCount)
        : mOld(oldDraft), mNew(newDraft), mLikeness(oldDraft, newDraft, wordCount),
          mAreNumbered(IsNumbered(oldDraft) && IsNumbered(newDraft)) {
        mPairs.newOf.assign(oldDraft.size(), kNone);
        mPairs.oldOf.assign(newDraft.size(), kNone);
    }

    ScenePairs Run() {
        if (mAreNumbered) {
            PairByNumber([](std::size_t) { return true; });
            PartWhatTextsContradict();
        }
        PairWordForWord();
        PairByLikeness();
        if (mAreNumbered && PartWhatNeighboursContradict()) {
            PairByLikeness();
        }
        if (mAreNumbered) { // a scene may be rewritten from the first word to the last
            PairByNumber([this](std::size_t oldIndex) { return DoNeighboursKeepTheirNumbers(oldIndex); });
        }
        PairInPlace();
        return std::move(mPairs);
    }

private:
    template <typename Condition>
    void PairByNumber(Condition isWanted) {
        std::unordered_map<std::u16string_view, std::size_t> byNumber;
        for (std::size_t index = 0; index < mNew.size(); ++index) {
            byNumber.emplace(mNew[index].number, index);
        }
        for (std::size_t index = 0; index < mOld.size(); ++index) {
            const auto found = byNumber.find(mOld[index].number);
            if (found != byNumber.end() && mPairs.IsPairOpen(index, found->second) && isWanted(index)) {
                mPairs.Pair(index, found->second);
            }
        }
    }

    // Where the scenes around bear other numbers than before, the same number says nothing.
    bool DoNeighboursKeepTheirNumbers(std::size_t oldIndex) const {
        const auto [after, before] = Gap(oldIndex);
        const auto keeps = [this](std::size_t newIndex) {
            return newIndex == kNone || mNew[newIndex].number == mOld[mPairs.oldOf[newIndex]].number;
        };
        return keeps(after) && keeps(before);
    }

    bool IsSure(std::size_t oldIndex, std::size_t newIndex) const {
        return mNew[newIndex].isOmitted || mLikeness.Of(oldIndex, newIndex) >= kSureOfNumber;
    }

    // A new scene that says more of what this one said than the one with its number does, and is no sure pair itself.
    std::size_t FoundElsewhere(std::size_t oldIndex) const {
        const double byNumber = mLikeness.Of(oldIndex, mPairs.newOf[oldIndex]);
        for (const std::size_t newIndex : mLikeness.Candidates(oldIndex)) {
            const double likeness = mLikeness.Of(oldIndex, newIndex);
            const std::size_t rival = mPairs.oldOf[newIndex];
            const bool isFree = rival == kNone || (!IsSure(rival, newIndex) &&
                                                   mLikeness.Of(rival, newIndex) + kMoreThanNumber <= likeness);
            if (likeness >= std::max(kAgainstNumber, byNumber + kMoreThanNumber) && isFree) {
                return newIndex;
            }
        }
        return kNone;
    }

    // A pair that is contradicted goes, and the one that holds its text as well; the texts pair them all anew.
    void PartWhatTextsContradict() {
        std::set<std::size_t> contradicted;
        for (std::size_t oldIndex = 0; oldIndex < mOld.size(); ++oldIndex) {
            const std::size_t newIndex = mPairs.newOf[oldIndex];
            const std::size_t elsewhere =
                newIndex == kNone || IsSure(oldIndex, newIndex) ? kNone : FoundElsewhere(oldIndex);
            if (elsewhere == kNone) {
                continue;
            }
            contradicted.insert(oldIndex);
            if (mPairs.oldOf[elsewhere] != kNone) {
                contradicted.insert(mPairs.oldOf[elsewhere]);
            }
        }
        for (const std::size_t oldIndex : contradicted) {
            mPairs.Part(oldIndex);
        }
    }

    // Pairs by number alone among scenes that have been numbered anew: of scenes that are gone, and new ones.
    bool PartWhatNeighboursContradict() {
        std::vector<std::size_t> contradicted;
        for (std::size_t oldIndex = 0; oldIndex < mOld.size(); ++oldIndex) {
            const std::size_t newIndex = mPairs.newOf[oldIndex];
            if (newIndex != kNone && mOld[oldIndex].number == mNew[newIndex].number && !IsSure(oldIndex, newIndex) &&
                !DoNeighboursKeepTheirNumbers(oldIndex)) {
                contradicted.push_back(oldIndex);
            }
        }
        std::for_each(contradicted.begin(), contradicted.end(), [this](std::size_t index) { mPairs.Part(index); });
        return !contradicted.empty();
    }

    void PairWordForWord() {
        std::unordered_map<Word, std::vector<std::size_t>> open;
        for (std::size_t newIndex = mNew.size(); newIndex-- > 0;) {
            if (mPairs.oldOf[newIndex] == kNone) {
                open[mLikeness.IdentityOfNew(newIndex)].push_back(newIndex);
            }
        }
        for (std::size_t oldIndex = 0; oldIndex < mOld.size(); ++oldIndex) {
            const auto found = open.find(mLikeness.IdentityOfOld(oldIndex));
            if (mPairs.newOf[oldIndex] == kNone && found != open.end() && !found->second.empty()) {
                mPairs.Pair(oldIndex, found->second.back());
                found->second.pop_back();
            }
        }
    }

    std::vector<Edge> OpenEdges() const {
        std::vector<Edge> edges;
        for (std::size_t oldIndex = 0; oldIndex < mOld.size(); ++oldIndex) {
            if (mPairs.newOf[oldIndex] != kNone) {
                continue;
            }
            for (const std::size_t newIndex : mLikeness.Candidates(oldIndex)) {
                const double likeness = mPairs.oldOf[newIndex] == kNone ? mLikeness.Of(oldIndex, newIndex) : 0;
                if (likeness >= kAlike) {
                    edges.push_back({oldIndex, newIndex, likeness});
                }
            }
        }
        std::sort(edges.begin(), edges.end(), [](const Edge& left, const Edge& right) {
            return std::tuple(-left.likeness, left.oldIndex, left.newIndex) <
                   std::tuple(-right.likeness, right.oldIndex, right.newIndex);
        });
        return edges;
    }

    // The likest first. Where several are as like, their place among paired neighbours decides.
    void PairByLikeness() {
        const std::vector<Edge> edges = OpenEdges();
        std::vector<std::vector<Edge>> ofOld(mOld.size());
        std::vector<std::vector<Edge>> ofNew(mNew.size());
        for (const Edge& edge : edges) {
            ofOld[edge.oldIndex].push_back(edge);
            ofNew[edge.newIndex].push_back(edge);
        }
        for (const Edge& edge : edges) {
            if (!IsOpen(edge)) {
                continue;
            }
            const std::vector<std::size_t> olds = Rivals(ofNew[edge.newIndex], edge, &Edge::oldIndex);
            const std::vector<std::size_t> news = Rivals(ofOld[edge.oldIndex], edge, &Edge::newIndex);
            Settle(edge, olds, news);
        }
    }

    bool IsOpen(const Edge& edge) const {
        return mPairs.IsPairOpen(edge.oldIndex, edge.newIndex) && mTiedOld.count(edge.oldIndex) == 0 &&
               mTiedNew.count(edge.newIndex) == 0;
    }

    std::vector<std::size_t> Rivals(const std::vector<Edge>& edges, const Edge& best, std::size_t Edge::*side) const {
        std::vector<std::size_t> rivals;
        for (const Edge& edge : edges) {
            if (IsOpen(edge) && edge.likeness >= best.likeness - kAsAlike) {
                rivals.push_back(edge.*side);
            }
        }
        std::sort(rivals.begin(), rivals.end());
        return rivals;
    }

    void Settle(const Edge& edge, const std::vector<std::size_t>& olds, const std::vector<std::size_t>& news) {
        const std::vector<std::size_t> newsInPlace =
            InPlace(news, [&](std::size_t index) { return IsInPlace(edge.oldIndex, index); });
        const std::vector<std::size_t> oldsInPlace =
            InPlace(olds, [&](std::size_t index) { return IsInPlace(index, edge.newIndex); });
        if (newsInPlace.size() == oldsInPlace.size()) { // mostly one of each
            for (std::size_t index = 0; index < newsInPlace.size(); ++index) {
                if (mPairs.IsPairOpen(oldsInPlace[index], newsInPlace[index])) {
                    mPairs.Pair(oldsInPlace[index], newsInPlace[index]);
                }
            }
            return;
        }
        SceneTie tie;
        for (const std::size_t index : oldsInPlace) {
            mTiedOld.insert(index);
            tie.oldPositions.push_back(index + 1);
        }
        for (const std::size_t index : newsInPlace) {
            mTiedNew.insert(index);
            tie.newPositions.push_back(index + 1);
        }
        mPairs.ties.push_back(std::move(tie));
    }

    // Those in place where there are any, else all.
    template <typename Condition>
    static std::vector<std::size_t> InPlace(const std::vector<std::size_t>& all, Condition isInPlace) {
        if (all.size() == 1) {
            return all;
        }
        std::vector<std::size_t> chosen;
        std::copy_if(all.begin(), all.end(), std::back_inserter(chosen), isInPlace);
        return chosen.empty() ? all : chosen;
    }

    // Whether the pair would stand between the same paired neighbours in both drafts.
    bool IsInPlace(std::size_t oldIndex, std::size_t newIndex) const {
        const auto [after, before] = Gap(oldIndex);
        return (after == kNone || newIndex > after) && newIndex < before;
    }

    // The new scenes of the nearest paired neighbours of an old one, in front and behind; kNone stands for none on both
    // sides. Far neighbours say little, and looking for them would take long.
    std::pair<std::size_t, std::size_t> Gap(std::size_t oldIndex) const {
        constexpr std::size_t kFar = 64;
        std::size_t after = kNone;
        for (std::size_t index = oldIndex; index-- > 0 && index + kFar > oldIndex && after == kNone;) {
            after = mPairs.newOf[index];
        }
        std::size_t before = kNone;
        for (std::size_t index = oldIndex + 1; index < mOld.size() && index < oldIndex + kFar && before == kNone;
             ++index) {
            before = mPairs.newOf[index];
        }
        return {after, before};
    }

    // What is left between two pairs of neighbours, one scene in each draft under one heading, is one scene rewritten.
    void PairInPlace() {
        for (std::size_t oldIndex = 0; oldIndex < mOld.size(); ++oldIndex) {
            if (mPairs.newOf[oldIndex] != kNone || mTiedOld.count(oldIndex) > 0) {
                continue;
            }
            const auto [after, before] = Gap(oldIndex);
            const std::size_t first = after == kNone ? 0 : after + 1;
            const std::size_t end = std::min({before, mNew.size(), first + kMostInGap});
            std::vector<std::size_t> fitting;
            for (std::size_t newIndex = first; newIndex < end; ++newIndex) {
                if (mPairs.oldOf[newIndex] == kNone && mTiedNew.count(newIndex) == 0 &&
                    FitsInPlace(oldIndex, newIndex)) {
                    fitting.push_back(newIndex);
                }
            }
            if (fitting.size() == 1) {
                mPairs.Pair(oldIndex, fitting.front());
            }
        }
    }

    // Two scenes with numbers that differ were told apart by those who numbered them.
    bool FitsInPlace(std::size_t oldIndex, std::size_t newIndex) const {
        const DraftScene& before = mOld[oldIndex];
        const DraftScene& after = mNew[newIndex];
        if (!before.number.empty() && !after.number.empty() && before.number != after.number) {
            return false;
        }
        return after.isOmitted ||
               (before.heading == after.heading && mLikeness.Of(oldIndex, newIndex) >= kAlikeInPlace);
    }

    static constexpr std::size_t kMostInGap = 64;

    const std::vector<DraftScene>& mOld;
    const std::vector<DraftScene>& mNew;
    const Likeness mLikeness;
    const bool mAreNumbered;
    ScenePairs mPairs;
    std::set<std::size_t> mTiedOld;
    std::set<std::size_t> mTiedNew;
};

} // namespace

void ScenePairs::Pair(std::size_t oldIndex, std::size_t newIndex) {
    newOf[oldIndex] = newIndex;
    oldOf[newIndex] = oldIndex;
}

void ScenePairs::Part(std::size_t oldIndex) {
    oldOf[newOf[oldIndex]] = kNone;
    newOf[oldIndex] = kNone;
}

ScenePairs PairScenes(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft,
                      std::size_t wordCount) {
    return Pairing(oldDraft, newDraft, wordCount).Run();
}

// The longest ascending run by patience: `lasts` holds, for each length, the old scene that ends such a run with the
// smallest new scene.
std::vector<std::size_t> FindMoved(const ScenePairs& pairs) {
    std::vector<std::size_t> lasts;
    std::vector<std::size_t> previous(pairs.newOf.size(), kNone);
    for (std::size_t oldIndex = 0; oldIndex < pairs.newOf.size(); ++oldIndex) {
        if (pairs.newOf[oldIndex] == kNone) {
            continue;
        }
        const auto place =
            std::lower_bound(lasts.begin(), lasts.end(), oldIndex, [&](std::size_t left, std::size_t right) {
                return pairs.newOf[left] < pairs.newOf[right];
            });
        previous[oldIndex] = place == lasts.begin() ? kNone : *std::prev(place);
        if (place == lasts.end()) {
            lasts.push_back(oldIndex);
        } else {
            *place = oldIndex;
        }
    }
    std::set<std::size_t> kept;
    for (std::size_t oldIndex = lasts.empty() ? kNone : lasts.back(); oldIndex != kNone;
         oldIndex = previous[oldIndex]) {
        kept.insert(oldIndex);
    }
    std::vector<std::size_t> moved;
    for (std::size_t oldIndex = 0; oldIndex < pairs.newOf.size(); ++oldIndex) {
        if (pairs.newOf[oldIndex] != kNone && kept.count(oldIndex) == 0) {
            moved.push_back(oldIndex);
        }
    }
    return moved;
}

} // namespace zonstoryparser

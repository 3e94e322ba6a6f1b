#include "revision/Likeness.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>

namespace zonstoryparser {

// Gives whole texts their numbers, as WordNumbers does words.
class TextNumbers {
public:
    Word Of(const Words& text) { return mNumbers.try_emplace(text, static_cast<Word>(mNumbers.size())).first->second; }
    std::size_t Count() const { return mNumbers.size(); }

private:
    std::map<Words, Word> mNumbers;
};

namespace {

constexpr std::size_t kMostScenesOfRareWord = 24;
constexpr std::size_t kMostCandidates = 12;
constexpr double kTextShare = 0.8; // the rest is the heading's

Words IdentityOf(const DraftScene& scene) {
    constexpr Word kEnd = ~Word{0}; // no word has it
    Words identity = scene.heading;
    identity.push_back(kEnd);
    identity.insert(identity.end(), scene.action.begin(), scene.action.end());
    for (std::size_t index = 0; index < scene.speeches.size(); ++index) {
        identity.push_back(kEnd);
        identity.push_back(scene.speakers[index]);
        identity.insert(identity.end(), scene.speeches[index].words.begin(), scene.speeches[index].words.end());
    }
    return identity;
}

std::vector<std::pair<Word, unsigned>> Counted(Words words) {
    std::sort(words.begin(), words.end());
    std::vector<std::pair<Word, unsigned>> counted;
    for (const Word word : words) {
        if (counted.empty() || counted.back().first != word) {
            counted.emplace_back(word, 0);
        }
        ++counted.back().second;
    }
    return counted;
}

} // namespace

Likeness::Likeness(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft,
                   std::size_t wordCount)
    : mOldDraft(oldDraft), mNewDraft(newDraft) {
    TextNumbers texts;
    mOld = MakeBags(oldDraft, texts);
    mNew = MakeBags(newDraft, texts);
    mScenesOfText.resize(texts.Count());
    WeighWords(wordCount);
    IndexNewScenes();
}

std::vector<Likeness::Bag> Likeness::MakeBags(const std::vector<DraftScene>& draft, TextNumbers& texts) {
    std::vector<Bag> bags(draft.size());
    std::transform(draft.begin(), draft.end(), bags.begin(), [&](const DraftScene& scene) {
        Bag bag;
        bag.words = Counted(scene.All());
        bag.heading = texts.Of(scene.heading);
        bag.identity = texts.Of(IdentityOf(scene));
        return bag;
    });
    return bags;
}

void Likeness::WeighWords(std::size_t wordCount) {
    std::vector<std::size_t> scenes(wordCount, 0);
    for (const auto* bags : {&mOld, &mNew}) {
        for (const Bag& bag : *bags) {
            for (const auto& [word, count] : bag.words) {
                ++scenes[word];
            }
        }
    }
    const auto all = static_cast<double>(mOld.size() + mNew.size());
    mWeights.resize(wordCount);
    std::transform(scenes.begin(), scenes.end(), mWeights.begin(), [all](std::size_t count) {
        return std::log(1 + all / static_cast<double>(std::max<std::size_t>(count, 1)));
    });
    for (auto* bags : {&mOld, &mNew}) {
        for (Bag& bag : *bags) {
            for (const auto& [word, count] : bag.words) {
                bag.weight += count * mWeights[word];
            }
        }
    }
}

void Likeness::IndexNewScenes() {
    mScenesOfWord.resize(mWeights.size());
    for (std::size_t index = 0; index < mNew.size(); ++index) {
        for (const auto& [word, count] : mNew[index].words) {
            if (mScenesOfWord[word].size() <= kMostScenesOfRareWord) { // one more tells that it is not rare
                mScenesOfWord[word].push_back(index);
            }
        }
        mScenesOfText[mNew[index].heading].push_back(index);
        mScenesOfText[mNew[index].identity].push_back(index);
    }
}

double Likeness::HeadingLikeness(std::size_t oldIndex, std::size_t newIndex) const {
    if (mOld[oldIndex].heading == mNew[newIndex].heading) {
        return 1;
    }
    constexpr double kSamePlace = 0.7;
    const Words& place = mOldDraft[oldIndex].location;
    return !place.empty() && place == mNewDraft[newIndex].location ? kSamePlace : 0;
}

double Likeness::Of(std::size_t oldIndex, std::size_t newIndex) const {
    const Bag& left = mOld[oldIndex];
    const Bag& right = mNew[newIndex];
    if (left.identity == right.identity) {
        return 1;
    }
    const double heading = HeadingLikeness(oldIndex, newIndex);
    if (left.words.empty() || right.words.empty()) {
        return heading / 2;
    }
    double shared = 0;
    auto other = right.words.begin();
    for (const auto& [word, count] : left.words) {
        while (other != right.words.end() && other->first < word) {
            ++other;
        }
        if (other != right.words.end() && other->first == word) {
            shared += std::min(count, other->second) * mWeights[word];
        }
    }
    return kTextShare * 2 * shared / (left.weight + right.weight) + (1 - kTextShare) * heading;
}

std::vector<std::size_t> Likeness::Candidates(std::size_t oldIndex) const {
    const Bag& bag = mOld[oldIndex];
    std::unordered_map<std::size_t, double> shared;
    for (const auto& [word, count] : bag.words) {
        if (mScenesOfWord[word].size() <= kMostScenesOfRareWord) {
            for (const std::size_t index : mScenesOfWord[word]) {
                shared[index] += mWeights[word];
            }
        }
    }
    for (const Word text : {bag.heading, bag.identity}) {
        const auto& scenes = mScenesOfText[text];
        const auto nearest = std::lower_bound(scenes.begin(), scenes.end(), oldIndex);
        const auto before = std::min<std::ptrdiff_t>(nearest - scenes.begin(), kMostCandidates / 4);
        const auto behind = std::min<std::ptrdiff_t>(scenes.end() - nearest, kMostCandidates / 4);
        for (auto scene = nearest - before; scene != nearest + behind; ++scene) {
            shared[*scene] += bag.weight; // before those that share words alone
        }
    }
    std::vector<std::pair<double, std::size_t>> ranked;
    ranked.reserve(shared.size());
    for (const auto& [index, weight] : shared) {
        ranked.emplace_back(-weight, index);
    }
    std::sort(ranked.begin(), ranked.end());
    ranked.resize(std::min(ranked.size(), kMostCandidates));
    std::vector<std::size_t> candidates;
    candidates.reserve(ranked.size());
    for (const auto& [weight, index] : ranked) {
        candidates.push_back(index);
    }
    return candidates;
}

} // namespace zonstoryparser

#include "match/NamePattern.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace zonstory {

namespace {

bool IsMost(std::size_t part, std::size_t whole) {
    return part * 10 >= whole * 9;
}

/// What the values of one number do over all names.
struct Column {
    std::size_t fits = 0;   ///< Names where it is a scene of the story.
    std::size_t agrees = 0; ///< Names where it is the known scene.
    std::size_t lettered = 0;
    std::size_t takes = 0; ///< Names where it can be a take.
    std::size_t distinct = 0;
    std::size_t groups = 0;   ///< Sets of names with the same numbers in front.
    std::size_t restarts = 0; ///< Of those that begin with 1 and leave none out.
    bool counts = false;      ///< Some of them have several values.
    bool gapless = false;     ///< All values follow one another.
    bool fromOne = false;

    bool CountsBelow() const { return counts && restarts * 10 >= groups * 7; }
    double Counting() const { return static_cast<double>(restarts) / static_cast<double>(groups) + (counts ? 1 : 0); }
};

/// Leaves one of each, sorted.
template <typename Value>
std::size_t CountDistinct(std::vector<Value>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values.size();
}

class Explanation {
public:
    Explanation(std::span<const KnownName> names, const SceneNumbers& story)
        : mFirst(*names.front().pieces), mNames(names.begin(), names.end()), mStory(story) {
        for (const KnownName& name : mNames) {
            mKnown += name.scene ? 1 : 0;
            mBelow = mBelow || name.belowScene;
        }
        Sort();
        for (std::size_t number = 0; number < mFirst.numbers.size(); ++number) {
            mColumns.push_back(Measure(number));
        }
    }

    NamePattern Choose() const {
        NamePattern pattern;
        pattern.names = mNames.size();
        pattern.below = mBelow;
        ChooseScene(pattern);
        if (pattern.scene) {
            const Column& scene = mColumns[*pattern.scene];
            ChooseTake(pattern);
            pattern.counting = scene.gapless && scene.fromOne;
            pattern.refuted = pattern.refuted || IsCounter(pattern);
            pattern.proven = !pattern.refuted && IsProven(pattern);
        }
        return pattern;
    }

private:
    const NamedNumber& Number(std::size_t name, std::size_t number) const {
        return mNames[name].pieces->numbers[number];
    }

    // By the first number, then its letters, then the next; those that are another one in each name last, as below them
    // all would begin anew.
    void Sort() {
        std::vector<std::size_t> order(mFirst.numbers.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        for (const std::size_t number : order) {
            std::vector<std::uint32_t> values;
            for (const KnownName& name : mNames) {
                values.push_back(name.pieces->numbers[number].value);
            }
            mCounters.push_back(mNames.size() >= kFewNames && CountDistinct(values) == mNames.size());
        }
        std::stable_partition(order.begin(), order.end(), [this](std::size_t number) { return !mCounters[number]; });
        const auto rank = [](const NamedNumber& one) { return std::tie(one.value, one.digits, one.letters); };
        std::sort(mNames.begin(), mNames.end(), [&](const KnownName& left, const KnownName& right) {
            const auto other = std::find_if(order.begin(), order.end(), [&](std::size_t number) {
                return rank(left.pieces->numbers[number]) != rank(right.pieces->numbers[number]);
            });
            return other != order.end() && rank(left.pieces->numbers[*other]) < rank(right.pieces->numbers[*other]);
        });
    }

    bool SameInFront(std::size_t name, std::size_t number) const {
        for (std::size_t at = 0; at < number; ++at) {
            const NamedNumber& one = Number(name - 1, at);
            const NamedNumber& other = Number(name, at);
            if (!mCounters[at] && (one.digits != other.digits || one.letters != other.letters)) {
                return false;
            }
        }
        return true;
    }

    Column Measure(std::size_t number) const {
        Column column;
        std::vector<std::string_view> digits;
        std::vector<std::uint32_t> values;
        for (std::size_t begin = 0, end = 0; begin < mNames.size(); begin = end) {
            std::size_t distinct = 0;
            for (end = begin; end < mNames.size() && (end == begin || SameInFront(end, number)); ++end) {
                const NamedNumber& one = Number(end, number);
                distinct += end == begin || one.value != Number(end - 1, number).value ? 1 : 0;
                values.push_back(one.value);
                digits.push_back(one.digits);
                column.takes += one.IsTake() ? 1 : 0;
                column.lettered += one.letters.empty() ? 0 : 1;
                Hold(mNames[end], one, column);
            }
            ++column.groups;
            column.counts = column.counts || distinct > 1;
            column.restarts += Number(begin, number).value == 1 && Number(end - 1, number).value == distinct ? 1 : 0;
        }
        column.distinct = CountDistinct(digits);
        const std::size_t distinct = CountDistinct(values);
        column.gapless = column.distinct == distinct && values.back() - values.front() + std::size_t{1} == distinct;
        column.fromOne = values.front() <= 1;
        return column;
    }

    void Hold(const KnownName& name, const NamedNumber& number, Column& column) const {
        const std::vector<std::size_t> scenes = mStory.Find(number.Scene()).scenes;
        column.fits += scenes.empty() ? 0 : 1;
        column.agrees += name.scene && std::binary_search(scenes.begin(), scenes.end(), *name.scene) ? 1 : 0;
    }

    template <typename Wanted>
    std::optional<std::size_t> FindFirst(Wanted wanted, std::size_t from = 0) const {
        for (std::size_t number = from; number < mColumns.size(); ++number) {
            if (wanted(number)) {
                return number;
            }
        }
        return std::nullopt;
    }

    std::optional<std::size_t> Find(SlateWord word) const {
        return FindFirst([&](std::size_t number) { return mFirst.numbers[number].word == word; });
    }

    // ---- The scene ----------------------------------------------------------------------------------------------------

    void ChooseScene(NamePattern& pattern) const {
        const auto set = [&](std::optional<std::size_t> scene, SlateRule rule) {
            pattern.scene = scene;
            pattern.rule = rule;
            return scene.has_value();
        };
        const bool hasBelow = mBelow || mFirst.Has(SlateWord::Take) || mFirst.Has(SlateWord::Shot);
        const bool found = set(Find(SlateWord::Scene), SlateRule::SceneWord) ||
                           (hasBelow && set(Find(SlateWord::Sequence), SlateRule::SceneLetter)) ||
                           set(FindTaught(), SlateRule::Taught) || set(Find(SlateWord::Slate), SlateRule::SlateWord) ||
                           set(Find(SlateWord::Sequence), SlateRule::SceneLetter) ||
                           set(FindFree(), SlateRule::AmongWords);
        if (!found) {
            return;
        }
        const Column& column = mColumns[*pattern.scene];
        pattern.taught = mKnown > 1 && IsMost(column.agrees, mKnown);
        pattern.refuted = pattern.rule != SlateRule::SceneWord && mKnown > 2 && column.agrees * 2 < mKnown;
    }

    // The number that is the known scene wherever one is known.
    std::optional<std::size_t> FindTaught() const {
        return FindFirst([this](std::size_t number) {
            return mKnown > 1 && IsMost(mColumns[number].agrees, mKnown) &&
                   mFirst.numbers[number].word == SlateWord::Unknown;
        });
    }

    bool AreScenes(std::size_t number) const { return IsMost(mColumns[number].fits, mNames.size()); }

    bool CanBeScene(std::size_t number) const {
        const NamedNumber& one = mFirst.numbers[number];
        const std::optional<std::size_t> take = Find(SlateWord::Take);
        const bool inside = number > 0 && one.separator == '\0' && !mFirst.numbers[number - 1].prefix.empty();
        return one.word == SlateWord::Unknown && !one.counter && !one.joined && !inside && (!take || number < *take);
    }

    // The first number that is not explained otherwise; of those of a lone name, the first that the story has.
    std::optional<std::size_t> FindFree() const {
        std::optional<std::size_t> first;
        for (std::size_t number = 0; number < mColumns.size(); ++number) {
            if (!CanBeScene(number)) {
                continue;
            }
            const bool isNext = !first || !mFirst.numbers[*first].prefix.empty() || mNames.size() >= kFewNames;
            if (isNext && AreScenes(number) && !IsExplained(number)) {
                return number;
            }
            first = first && mFirst.numbers[*first].prefix.empty() ? first : number;
        }
        return first;
    }

    // A constant, a counter, or what counts from 1 below the numbers in front; only where another may be the scene.
    bool IsExplained(std::size_t number) const {
        const auto another = FindFirst(
            [this](std::size_t later) { return CanBeScene(later) && AreScenes(later) && !IsCountedBelow(later); },
            number + 1);
        const Column& column = mColumns[number];
        const bool constant = column.distinct == 1 && column.lettered == 0;
        const bool rolls = another && column.fromOne && mColumns[*another].lettered == mNames.size(); // 001-60E-2
        const bool counter = column.gapless && (column.distinct >= kFewNames || rolls);
        return another && mNames.size() >= kFewNames && (constant || counter || IsCountedBelow(number));
    }

    bool IsCountedBelow(std::size_t number) const {
        return number > 0 && mNames.size() >= kFewNames && mColumns[number].CountsBelow();
    }

    // ---- The take -----------------------------------------------------------------------------------------------------

    void ChooseTake(NamePattern& pattern) const {
        for (std::size_t number = 0; number < mColumns.size(); ++number) {
            pattern.take = mFirst.numbers[number].word == SlateWord::Take ? number : pattern.take;
        }
        pattern.take = pattern.take ? pattern.take : FindFreeTake(*pattern.scene, pattern);
        const bool spoken = pattern.take && mFirst.numbers[*pattern.take].word == SlateWord::Take;
        if (pattern.rule == SlateRule::AmongWords) {
            pattern.rule = spoken         ? SlateRule::NumberAndTakeWord
                           : pattern.take ? SlateRule::NumberAndTake
                                          : SlateRule::NumberAlone;
        }
    }

    // Behind the scene: the number that counts best below those in front; of a lone lettered slate the first, else the last.
    std::optional<std::size_t> FindFreeTake(std::size_t scene, const NamePattern& pattern) const {
        std::vector<std::size_t> free;
        for (std::size_t number = scene + 1; number < mColumns.size(); ++number) {
            const NamedNumber& one = mFirst.numbers[number];
            if (one.word == SlateWord::Unknown && !one.joined && mColumns[number].takes == mNames.size()) {
                free.push_back(number);
            }
        }
        if (free.empty()) {
            return std::nullopt;
        }
        if (mNames.size() >= kFewNames) {
            return *std::max_element(free.rbegin(), free.rend(), [this](std::size_t left, std::size_t right) {
                return mColumns[left].Counting() < mColumns[right].Counting();
            });
        }
        const bool lettered = mColumns[scene].lettered > 0 && pattern.rule != SlateRule::SceneWord;
        return lettered ? free.front() : free.back();
    }

    // ---- What the names say together --------------------------------------------------------------------------------------

    bool IsProven(const NamePattern& pattern) const {
        const Column& scene = mColumns[*pattern.scene];
        const bool takes = pattern.take && mColumns[*pattern.take].CountsBelow();
        return pattern.taught || (mNames.size() > kFewNames && takes && scene.distinct >= 3 &&
                                  !mCounters[*pattern.scene] && AreScenes(*pattern.scene));
    }

    // Each value once, or numbers behind that never begin with 1 as takes do.
    bool IsCounter(const NamePattern& pattern) const {
        if (pattern.rule == SlateRule::SceneWord || pattern.taught) {
            return false;
        }
        const Column& scene = mColumns[*pattern.scene];
        if (mNames.size() < kFewNames) {
            return scene.gapless && scene.fromOne && !pattern.take && scene.lettered == 0;
        }
        if (pattern.rule == SlateRule::SlateWord) {
            return scene.gapless && scene.lettered == 0;
        }
        if (pattern.rule == SlateRule::SceneLetter) {
            return scene.distinct == 1 && !mFirst.Has(SlateWord::Take) && !mFirst.Has(SlateWord::Shot);
        }
        const bool eachOnce = scene.distinct == mNames.size() && scene.lettered == 0;
        const bool takes = pattern.take && mColumns[*pattern.take].restarts * 2 >= mColumns[*pattern.take].groups;
        return (eachOnce && scene.gapless) ||
               (scene.lettered == 0 && pattern.take && !takes && !mFirst.Has(SlateWord::Take)) ||
               (!AreScenes(*pattern.scene) && scene.fits * 2 < mNames.size());
    }

    const NamePieces& mFirst; ///< Of one shape, all have the same words.
    std::vector<KnownName> mNames;
    const SceneNumbers& mStory;
    std::vector<bool> mCounters;
    std::vector<Column> mColumns;
    std::size_t mKnown = 0;
    bool mBelow = false;
};

} // namespace

NamePattern ReadPattern(std::span<const KnownName> names, const SceneNumbers& story) {
    return Explanation(names, story).Choose();
}

} // namespace zonstory

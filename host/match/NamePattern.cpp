#include "match/NamePattern.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace zonstory {

namespace {

constexpr std::size_t kFew = 5;             ///< Names that prove nothing yet.
constexpr std::size_t kMany = 12;           ///< Names that outweigh a word which nobody knows.
constexpr std::uint32_t kReachOfARange = 3; ///< "12-14" may be two scenes and what is between; "2-11" is a take.

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
};

class Explanation {
public:
    Explanation(std::span<const KnownName> names, const SceneNumbers& story) : mNames(names), mStory(story) {
        for (const KnownName& name : mNames) {
            mKnown += name.scene ? 1 : 0;
            mBelow = mBelow || name.belowScene;
        }
        FindCounters();
        Sort();
        for (std::size_t number = 0; number < First().numbers.size(); ++number) {
            mColumns.push_back(Measure(number));
        }
    }

    NamePattern Choose() {
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
    const NamePieces& First() const { return *mNames.front().pieces; }
    const NamedNumber& Number(std::size_t name, std::size_t number) const {
        return mNames[mOrder[name]].pieces->numbers[number];
    }

    // Numbers that are another one in each name are in front of nothing: below them, all would begin anew.
    void FindCounters() {
        for (std::size_t number = 0; number < First().numbers.size(); ++number) {
            std::unordered_set<std::uint32_t> values;
            for (const KnownName& name : mNames) {
                values.insert(name.pieces->numbers[number].value);
            }
            mCounters.push_back(mNames.size() >= kFew && values.size() == mNames.size());
        }
    }

    // By the first number, then its letters, then the next; counters last.
    void Sort() {
        for (std::size_t name = 0; name < mNames.size(); ++name) {
            mOrder.push_back(name);
        }
        std::sort(mOrder.begin(), mOrder.end(), [this](std::size_t left, std::size_t right) {
            for (const bool counters : {false, true}) {
                for (std::size_t number = 0; number < mCounters.size(); ++number) {
                    const NamedNumber& a = mNames[left].pieces->numbers[number];
                    const NamedNumber& b = mNames[right].pieces->numbers[number];
                    const auto one = std::tie(a.value, a.digits, a.letters);
                    const auto other = std::tie(b.value, b.digits, b.letters);
                    if (mCounters[number] == counters && one != other) {
                        return one < other;
                    }
                }
            }
            return false;
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
                Hold(mNames[mOrder[end]], one, column);
            }
            ++column.groups;
            column.counts = column.counts || distinct > 1;
            column.restarts += Number(begin, number).value == 1 && Number(end - 1, number).value == distinct ? 1 : 0;
        }
        std::sort(values.begin(), values.end());
        const std::size_t reach = values.back() - values.front() + std::size_t{1};
        values.erase(std::unique(values.begin(), values.end()), values.end());
        std::sort(digits.begin(), digits.end());
        column.distinct = static_cast<std::size_t>(std::unique(digits.begin(), digits.end()) - digits.begin());
        column.gapless = reach == values.size() && column.distinct == values.size();
        column.fromOne = values.front() <= 1;
        return column;
    }

    void Hold(const KnownName& name, const NamedNumber& number, Column& column) const {
        const SceneNumbers::Found found = mStory.Find(number.Scene());
        column.fits += found.fit != SceneNumbers::Fit::None ? 1 : 0;
        const bool agrees = name.scene && std::binary_search(found.scenes.begin(), found.scenes.end(), *name.scene);
        column.agrees += agrees ? 1 : 0;
    }

    std::optional<std::size_t> Find(SlateWord word) const {
        for (std::size_t number = 0; number < mColumns.size(); ++number) {
            if (First().numbers[number].word == word) {
                return number;
            }
        }
        return std::nullopt;
    }

    // ---- The scene ----------------------------------------------------------------------------------------------------

    void ChooseScene(NamePattern& pattern) const {
        const auto set = [&](std::optional<std::size_t> scene, SlateRule rule) {
            pattern.scene = scene;
            pattern.rule = rule;
            return scene.has_value();
        };
        const bool hasBelow = mBelow || First().Has(SlateWord::Take) || First().Has(SlateWord::Shot);
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
        for (std::size_t number = 0; mKnown > 1 && number < mColumns.size(); ++number) {
            if (IsMost(mColumns[number].agrees, mKnown) && First().numbers[number].word == SlateWord::Unknown) {
                return number;
            }
        }
        return std::nullopt;
    }

    bool CanBeScene(std::size_t number) const {
        const NamedNumber& one = First().numbers[number];
        const std::optional<std::size_t> take = Find(SlateWord::Take);
        return one.word == SlateWord::Unknown && !one.counter && !one.joined && (!take || number < *take);
    }

    // The first number that is not explained otherwise; of those of a lone name, the first that the story has.
    std::optional<std::size_t> FindFree() const {
        std::optional<std::size_t> first;
        for (std::size_t number = 0; number < mColumns.size(); ++number) {
            if (!CanBeScene(number)) {
                continue;
            }
            const bool isNext = !first || !First().numbers[*first].prefix.empty() || mNames.size() >= kFew;
            if (isNext && IsMost(mColumns[number].fits, mNames.size()) && !IsExplained(number)) {
                return number;
            }
            const bool stays = first && First().numbers[*first].prefix.empty();
            first = stays ? first : number;
        }
        return first;
    }

    // A constant, a counter, or what counts from 1 below the numbers in front; only where another may be the scene.
    bool IsExplained(std::size_t number) const {
        bool another = false;
        for (std::size_t later = number + 1; later < mColumns.size(); ++later) {
            another =
                another || (CanBeScene(later) && IsMost(mColumns[later].fits, mNames.size()) &&
                            !IsCountedBelow(later) && later + 1 + (Find(SlateWord::Take) ? 1 : 0) <= mColumns.size());
        }
        const Column& column = mColumns[number];
        const bool constant = column.distinct == 1 && column.lettered == 0;
        const bool counter = column.gapless && column.distinct >= kFew;
        return another && mNames.size() >= kFew && (constant || counter || IsCountedBelow(number));
    }

    bool IsCountedBelow(std::size_t number) const {
        const Column& column = mColumns[number];
        return number > 0 && mNames.size() >= kFew && column.counts && column.restarts * 10 >= column.groups * 7;
    }

    // ---- The take -----------------------------------------------------------------------------------------------------

    void ChooseTake(NamePattern& pattern) const {
        const std::size_t scene = *pattern.scene;
        for (std::size_t number = 0; number < mColumns.size(); ++number) {
            if (First().numbers[number].word == SlateWord::Take) {
                pattern.take = number;
            }
        }
        if (!pattern.take) {
            pattern.take = FindFreeTake(scene, pattern);
        }
        const bool spoken = pattern.take && First().numbers[*pattern.take].word == SlateWord::Take;
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
            const NamedNumber& one = First().numbers[number];
            if (one.word == SlateWord::Unknown && !one.joined && mColumns[number].takes == mNames.size()) {
                free.push_back(number);
            }
        }
        if (free.empty()) {
            return std::nullopt;
        }
        if (mNames.size() >= kFew) {
            return *std::max_element(free.begin(), free.end(), [this](std::size_t left, std::size_t right) {
                return Counting(left) <= Counting(right);
            });
        }
        const bool lettered = mColumns[scene].lettered > 0 && pattern.rule != SlateRule::SceneWord;
        return lettered ? free.front() : free.back();
    }

    double Counting(std::size_t number) const {
        const Column& column = mColumns[number];
        return static_cast<double>(column.restarts) / static_cast<double>(column.groups) + (column.counts ? 1 : 0);
    }

    // ---- What the names say together --------------------------------------------------------------------------------------

    bool IsProven(const NamePattern& pattern) const {
        const Column& scene = mColumns[*pattern.scene];
        if (pattern.taught) {
            return true;
        }
        const bool takes = pattern.take &&
                           mColumns[*pattern.take].restarts * 10 >= mColumns[*pattern.take].groups * 7 &&
                           mColumns[*pattern.take].counts;
        return mNames.size() > kFew && takes && scene.distinct >= 3 && !mCounters[*pattern.scene] &&
               IsMost(scene.fits, mNames.size());
    }

    // Each value once, or numbers behind that never begin with 1 as takes do.
    bool IsCounter(const NamePattern& pattern) const {
        if (pattern.rule == SlateRule::SceneWord || pattern.taught) {
            return false;
        }
        const Column& scene = mColumns[*pattern.scene];
        if (mNames.size() < kFew) {
            return scene.gapless && scene.fromOne && !pattern.take && scene.lettered == 0;
        }
        if (pattern.rule == SlateRule::SlateWord) {
            return scene.gapless && scene.lettered == 0;
        }
        if (pattern.rule == SlateRule::SceneLetter) {
            return scene.distinct == 1 && !First().Has(SlateWord::Take) && !First().Has(SlateWord::Shot);
        }
        const bool eachOnce = scene.distinct == mNames.size() && scene.lettered == 0;
        const bool takes = pattern.take && mColumns[*pattern.take].restarts * 2 >= mColumns[*pattern.take].groups;
        return (eachOnce && scene.gapless) ||
               (scene.lettered == 0 && pattern.take && !takes && !First().Has(SlateWord::Take)) ||
               (!IsMost(scene.fits, mNames.size()) && scene.fits * 2 < mNames.size());
    }

    std::span<const KnownName> mNames;
    const SceneNumbers& mStory;
    std::vector<bool> mCounters;
    std::vector<std::size_t> mOrder;
    std::vector<Column> mColumns;
    std::size_t mKnown = 0;
    bool mBelow = false;
};

// ---- One name --------------------------------------------------------------------------------------------------------

// 4K, 25P, 3D, 5D, 2X: sizes, rates and cameras, which are set-ups where other names bear it out.
bool LooksLikeFormat(const NamedNumber& number, bool hasTake) {
    struct Letter {
        const char* letter;
        std::uint32_t highest;
    };
    constexpr Letter kLetters[] = {
        {"K", 12}, {"D", 9}, {"X", 10}, {"S", 3}, {"G", 5}}; // the last three never with a take
    constexpr std::uint32_t kRates[] = {24, 25, 30, 48, 50, 60, 96, 100, 120, 192};
    constexpr std::uint32_t kSizes[] = {422, 444, 480, 540, 576, 709, 720, 4444};
    const bool rate = number.letters == "P" || number.letters == "H" || number.letters == "K";
    return (rate && std::find(std::begin(kRates), std::end(kRates), number.value) != std::end(kRates)) ||
           (number.letters.empty() &&
            std::find(std::begin(kSizes), std::end(kSizes), number.value) != std::end(kSizes)) ||
           std::any_of(std::begin(kLetters), std::end(kLetters), [&](const Letter& one) {
               return number.letters == one.letter && number.value <= one.highest && (!hasTake || &one < kLetters + 2);
           });
}

// 16-9, 5-1, 2-39, 4-5: what pictures and mixes are called, where nothing bears out a scene and a take.
bool IsRatio(const NamedNumber& first, const NamedNumber& second) {
    constexpr std::pair<std::uint32_t, std::uint32_t> kPairs[] = {
        {16, 9}, {9, 16}, {4, 3},  {3, 4},  {4, 5},  {5, 4},  {1, 1},  {2, 1},  {21, 9}, {5, 1}, {7, 1},
        {2, 0},  {1, 33}, {1, 66}, {1, 78}, {1, 85}, {2, 35}, {2, 39}, {2, 40}, {3, 2},  {2, 3}};
    return first.letters.empty() && second.letters.empty() &&
           std::find(std::begin(kPairs), std::end(kPairs), std::pair(first.value, second.value)) != std::end(kPairs);
}

Confidence SurenessOfFree(const NamePieces& name, const NamePattern& pattern) {
    const NamedNumber& scene = name.numbers[*pattern.scene];
    const NamedNumber* const take = pattern.take ? &name.numbers[*pattern.take] : nullptr;
    const bool spoken = take != nullptr && take->word == SlateWord::Take;
    if (name.against || pattern.refuted || scene.counter || (take != nullptr && take->counter)) {
        return Confidence::Low;
    }
    if (name.unknownWords) {
        const bool many = pattern.proven && !pattern.counting;
        const bool lettered = !scene.letters.empty() && take != nullptr && !LooksLikeFormat(scene, true);
        return many                                 ? pattern.names >= kMany ? Confidence::High : Confidence::Medium
               : lettered && !scene.counted         ? Confidence::Medium
               : lettered && scene.separator != ' ' ? Confidence::Medium
                                                    : Confidence::Low;
    }
    if (pattern.proven) {
        return pattern.counting && !spoken ? Confidence::Medium : Confidence::High;
    }
    const auto isOther = [&](const NamedNumber& one) {
        return &one != &scene && &one != take && !one.joined &&
               (one.word != SlateWord::Remark || one.place < scene.place);
    };
    const bool others = std::any_of(name.numbers.begin(), name.numbers.end(), isOther);
    const bool bare = scene.letters.empty() && take != nullptr;
    if (!bare && LooksLikeFormat(scene, take != nullptr) && (!spoken || name.noise || others)) {
        return take != nullptr && pattern.names > kFew ? Confidence::Medium : Confidence::Low;
    }
    if (take != nullptr && !scene.letters.empty()) {
        return Confidence::High;
    }
    if (spoken) {
        return Confidence::Medium;
    }
    if (take != nullptr) {
        const bool weak = others || IsRatio(scene, *take) || take->separator == '.' || name.noise;
        return weak ? Confidence::Low : Confidence::Medium;
    }
    const bool plain = scene.letters.empty() && !name.remarks && (pattern.counting || pattern.names < 3);
    return others || name.noise || scene.counted || plain ? Confidence::Low : Confidence::Medium;
}

SlateReading Main(const NamePieces& name, const NamePattern& pattern, Confidence confidence) {
    const NamedNumber& number = name.numbers[*pattern.scene];
    SlateReading reading;
    reading.scene = number.Scene();
    reading.take = pattern.take ? name.numbers[*pattern.take].digits : "";
    reading.rule =
        pattern.rule == SlateRule::NumberAndTake && !number.letters.empty() ? SlateRule::SetUpAndTake : pattern.rule;
    reading.confidence = confidence;
    reading.place = number.place;
    reading.standing = number.letters.size() > 2 ? Standing::Rival : Standing::Main;
    return reading;
}

} // namespace

Confidence NamePattern::Sureness(const NamePieces& name) const {
    const NamedNumber& number = name.numbers[*scene];
    const bool lone = name.unknownWords && names < kFew;
    const bool hasTake = take.has_value() && !name.numbers[*take].counter;
    const bool spoken = hasTake && name.numbers[*take].word == SlateWord::Take;
    const Confidence sure = lone || name.against ? Confidence::Medium : Confidence::High;
    switch (rule) {
    case SlateRule::SceneWord:
        return name.against && !hasTake ? Confidence::Low : sure;
    case SlateRule::Taught:
        return taught && !refuted ? Confidence::High : Confidence::Low;
    case SlateRule::SceneLetter:
        if (refuted || number.counted || name.against || number.counter) {
            return Confidence::Low;
        }
        return spoken || below || name.Has(SlateWord::Shot) || proven ? sure
               : hasTake && !name.unknownWords                        ? Confidence::Medium
                                                                      : Confidence::Low;
    case SlateRule::SlateWord:
        return refuted || (!hasTake && number.letters.empty()) ? Confidence::Low
               : number.letters.empty()                        ? Confidence::Medium
                                                               : sure;
    default:
        return SurenessOfFree(name, *this);
    }
}

NamePattern ReadPattern(std::span<const KnownName> names, const SceneNumbers& story) {
    return Explanation(names, story).Choose();
}

std::vector<SlateReading> ReadByPattern(const NamePieces& name, const NamePattern& pattern) {
    std::vector<SlateReading> readings;
    if (!pattern.scene) {
        return readings;
    }
    const SlateReading main = Main(name, pattern, pattern.Sureness(name));
    readings.push_back(main);
    const auto add = [&](std::string scene, std::uint32_t place, Standing standing) {
        SlateReading reading = main;
        reading.scene = std::move(scene);
        reading.place = place;
        reading.standing = standing;
        readings.push_back(std::move(reading));
    };
    const NamedNumber& scene = name.numbers[*pattern.scene];
    for (std::size_t at = 0; at < name.numbers.size(); ++at) {
        const NamedNumber& other = name.numbers[at];
        const bool sameWord = at != *pattern.scene && scene.word == SlateWord::Scene && other.word == SlateWord::Scene;
        if (sameWord || (at > *pattern.scene && other.joined)) {
            add(other.Scene(), other.place, Standing::Main);
        }
        const bool lettered = other.word == SlateWord::Unknown && !other.letters.empty() && pattern.take != at;
        if (!pattern.proven && scene.word == SlateWord::Unknown && at > *pattern.scene && lettered &&
            !other.joined) { // 14_13A-3
            add(other.Scene(), other.place, Standing::Rival);
        }
    }
    if (pattern.proven) {
        return readings;
    }
    if (scene.lettersApart) { // "12 A 3" may be 12A, or 12 by camera A
        add(scene.prefix + scene.digits, scene.place, Standing::Rival);
    }
    if (!scene.apart.empty() && scene.prefix.empty()) {
        add(scene.apart + scene.Scene(), scene.place, Standing::Rival);
    }
    if (!scene.unread.empty()) {
        add(scene.prefix + scene.digits + scene.unread, scene.place, Standing::Rival);
    }
    if (pattern.take && scene.letters.empty()) {
        const NamedNumber& take = name.numbers[*pattern.take];
        const bool range = take.word == SlateWord::Unknown && take.value > scene.value &&
                           take.value <= scene.value + kReachOfARange && take.value >= 10 && take.letters.empty() &&
                           take.padded == scene.padded && *pattern.take == *pattern.scene + 1;
        if (range) {
            add(take.digits, take.place, Standing::Rival);
        }
    }
    return readings;
}

} // namespace zonstory

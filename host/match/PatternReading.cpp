#include "match/PatternReading.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zonstory {

namespace {

constexpr std::size_t kMany = 12;           ///< Names that outweigh a word which nobody knows.
constexpr std::uint32_t kReachOfARange = 3; ///< "12-14" may be two scenes and what is between; "2-11" is a take.

template <typename Row, std::size_t Count>
bool IsOneOf(const Row (&rows)[Count], const Row& wanted) {
    return std::find(std::begin(rows), std::end(rows), wanted) != std::end(rows);
}

// 4K, 25P, 3D, 5D, 2X: sizes, rates and cameras, which are set-ups where other names bear it out.
bool LooksLikeFormat(const NamedNumber& number, bool hasTake) {
    struct Letter {
        const char* letter;
        std::uint32_t highest;
    };
    // The last three never with a take.
    constexpr Letter kLetters[] = {{"K", 12}, {"D", 9}, {"X", 10}, {"S", 3}, {"G", 5}};
    constexpr std::uint32_t kRates[] = {24, 25, 30, 48, 50, 60, 96, 100, 120, 192};
    constexpr std::uint32_t kSizes[] = {422, 444, 480, 540, 576, 709, 720, 4444};
    const bool rate = number.letters == "P" || number.letters == "H" || number.letters == "K";
    return (rate && IsOneOf(kRates, number.value)) || (number.letters.empty() && IsOneOf(kSizes, number.value)) ||
           std::any_of(std::begin(kLetters), std::end(kLetters), [&](const Letter& one) {
               return number.letters == one.letter && number.value <= one.highest && (!hasTake || &one < kLetters + 2);
           });
}

// 16-9, 5-1, 2-39, 4-5: what pictures and mixes are called, where nothing bears out a scene and a take.
bool IsRatio(const NamedNumber& first, const NamedNumber& second) {
    constexpr std::pair<std::uint32_t, std::uint32_t> kPairs[] = {
        {16, 9}, {9, 16}, {4, 3},  {3, 4},  {4, 5},  {5, 4},  {1, 1},  {2, 1},  {21, 9}, {5, 1}, {7, 1},
        {2, 0},  {1, 33}, {1, 66}, {1, 78}, {1, 85}, {2, 35}, {2, 39}, {2, 40}, {3, 2},  {2, 3}};
    return first.letters.empty() && second.letters.empty() && IsOneOf(kPairs, std::pair(first.value, second.value));
}

Confidence AmongUnknownWords(const NamePattern& pattern, const NamedNumber& scene, bool hasTake) {
    if (pattern.proven && !pattern.counting) {
        return pattern.names >= kMany ? Confidence::High : Confidence::Medium;
    }
    const bool lettered = !scene.letters.empty() && hasTake && !LooksLikeFormat(scene, true);
    return lettered && (!scene.counted || scene.separator != ' ') ? Confidence::Medium : Confidence::Low;
}

bool HasOthers(const NamePieces& name, const NamedNumber& scene, const NamedNumber* take) {
    return std::any_of(name.numbers.begin(), name.numbers.end(), [&](const NamedNumber& one) {
        return &one != &scene && &one != take && !one.joined &&
               (one.word != SlateWord::Remark || one.place < scene.place);
    });
}

Confidence WithTake(const NamePieces& name, const NamedNumber& scene, const NamedNumber& take, bool others) {
    if (!scene.letters.empty()) {
        return Confidence::High;
    }
    const bool weak = others || scene.counted || IsRatio(scene, take) || take.separator == '.' || name.noise;
    return take.word != SlateWord::Take && weak ? Confidence::Low : Confidence::Medium;
}

Confidence SurenessOfUnproven(const NamePieces& name, const NamePattern& pattern, const NamedNumber& scene,
                              const NamedNumber* take) {
    const bool spoken = take != nullptr && take->word == SlateWord::Take;
    const bool others = HasOthers(name, scene, take);
    const bool bare = scene.letters.empty() && take != nullptr;
    if (!bare && LooksLikeFormat(scene, take != nullptr) && (!spoken || name.noise || others)) {
        return take != nullptr && pattern.names > kFewNames ? Confidence::Medium : Confidence::Low;
    }
    if (take != nullptr) {
        return WithTake(name, scene, *take, others);
    }
    const bool plain = scene.letters.empty() && !name.remarks && (pattern.counting || pattern.names < 3);
    return others || name.noise || scene.counted || plain ? Confidence::Low : Confidence::Medium;
}

Confidence SurenessOfFree(const NamePieces& name, const NamePattern& pattern) {
    const NamedNumber& scene = name.numbers[*pattern.scene];
    const NamedNumber* const take = pattern.take ? &name.numbers[*pattern.take] : nullptr;
    if (name.against || pattern.refuted || scene.counter || (take != nullptr && take->counter)) {
        return Confidence::Low;
    }
    if (name.unknownWords) {
        return AmongUnknownWords(pattern, scene, take != nullptr);
    }
    if (pattern.proven) {
        const bool spoken = take != nullptr && take->word == SlateWord::Take;
        return pattern.counting && !spoken ? Confidence::Medium : Confidence::High;
    }
    return SurenessOfUnproven(name, pattern, scene, take);
}

// Of S12, where `sure` is the most that it can be.
Confidence SurenessOfLetter(const NamePieces& name, const NamePattern& pattern, bool hasTake, Confidence sure) {
    const NamedNumber& scene = name.numbers[*pattern.scene];
    if (pattern.refuted || scene.counted || name.against || scene.counter) {
        return Confidence::Low;
    }
    const bool spoken = hasTake && name.numbers[*pattern.take].word == SlateWord::Take;
    if (spoken || pattern.below || name.Has(SlateWord::Shot) || pattern.proven) {
        return sure;
    }
    return hasTake && !name.unknownWords ? Confidence::Medium : Confidence::Low;
}

SlateReading ReadMain(const NamePieces& name, const NamePattern& pattern) {
    const NamedNumber& number = name.numbers[*pattern.scene];
    SlateReading reading;
    reading.scene = number.Scene();
    reading.take = pattern.take ? name.numbers[*pattern.take].digits : "";
    reading.rule =
        pattern.rule == SlateRule::NumberAndTake && !number.letters.empty() ? SlateRule::SetUpAndTake : pattern.rule;
    reading.confidence = Sureness(name, pattern);
    reading.place = number.place;
    reading.standing = number.letters.size() > 2 ? Standing::Rival : Standing::Main;
    return reading;
}

// As the first one, but of this scene.
void Add(std::vector<SlateReading>& readings, std::string scene, const NamedNumber& number, Standing standing) {
    SlateReading reading = readings.front();
    reading.scene = std::move(scene);
    reading.place = number.place;
    reading.standing = standing;
    readings.push_back(std::move(reading));
}

// Scenes that are named together, and lettered numbers that may be meant: 14_13A-3.
void AddOtherNumbers(const NamePieces& name, const NamePattern& pattern, std::vector<SlateReading>& readings) {
    const SlateWord word = name.numbers[*pattern.scene].word;
    for (std::size_t at = 0; at < name.numbers.size(); ++at) {
        const NamedNumber& other = name.numbers[at];
        const bool behind = at > *pattern.scene;
        const bool same = other.word == word;
        const bool lettered = same && word == SlateWord::Unknown && !other.letters.empty() && pattern.take != at;
        if ((behind && other.joined) || (at != *pattern.scene && same && word == SlateWord::Scene)) {
            Add(readings, other.Scene(), other, Standing::Main);
        } else if (behind && lettered && !pattern.proven) {
            Add(readings, other.Scene(), other, Standing::Rival);
        }
    }
}

bool IsRange(const NamePieces& name, const NamePattern& pattern) {
    const NamedNumber& scene = name.numbers[*pattern.scene];
    if (pattern.take != *pattern.scene + 1 || !scene.letters.empty()) {
        return false;
    }
    const NamedNumber& take = name.numbers[*pattern.take];
    return take.word == SlateWord::Unknown && take.letters.empty() && take.padded == scene.padded && take.value >= 10 &&
           take.value > scene.value && take.value <= scene.value + kReachOfARange;
}

// Other ways to cut the scene's own number.
void AddRivals(const NamePieces& name, const NamePattern& pattern, std::vector<SlateReading>& readings) {
    const NamedNumber& scene = name.numbers[*pattern.scene];
    const std::string bare = scene.prefix + scene.digits;
    if (scene.lettersApart) { // "12 A 3" may be 12A, or 12 by camera A
        Add(readings, bare, scene, Standing::Rival);
    }
    if (!scene.apart.empty() && scene.prefix.empty()) {
        Add(readings, scene.apart + scene.Scene(), scene, Standing::Rival);
    }
    if (!scene.unread.empty()) {
        Add(readings, bare + scene.unread, scene, Standing::Rival);
    }
    if (IsRange(name, pattern)) {
        const NamedNumber& take = name.numbers[*pattern.take];
        Add(readings, take.digits, take, Standing::Rival);
    }
}

} // namespace

Confidence Sureness(const NamePieces& name, const NamePattern& pattern) {
    const NamedNumber& number = name.numbers[*pattern.scene];
    const bool lone = name.unknownWords && pattern.names < kFewNames;
    const bool hasTake = pattern.take && !name.numbers[*pattern.take].counter;
    const Confidence sure = lone || name.against ? Confidence::Medium : Confidence::High;
    switch (pattern.rule) {
    case SlateRule::SceneWord:
        return name.against && !hasTake ? Confidence::Low : sure;
    case SlateRule::Taught:
        return pattern.taught && !pattern.refuted ? Confidence::High : Confidence::Low;
    case SlateRule::SceneLetter:
        return SurenessOfLetter(name, pattern, hasTake, sure);
    case SlateRule::SlateWord:
        return pattern.refuted || (!hasTake && number.letters.empty()) ? Confidence::Low
               : number.letters.empty()                                ? Confidence::Medium
                                                                       : sure;
    default:
        return SurenessOfFree(name, pattern);
    }
}

std::vector<SlateReading> ReadByPattern(const NamePieces& name, const NamePattern& pattern) {
    std::vector<SlateReading> readings;
    if (pattern.scene) {
        readings.push_back(ReadMain(name, pattern));
        AddOtherNumbers(name, pattern, readings);
        if (!pattern.proven) {
            AddRivals(name, pattern, readings);
        }
    }
    return readings;
}

} // namespace zonstory

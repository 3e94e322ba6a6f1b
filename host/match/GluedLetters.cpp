#include "match/GluedLetters.h"

#include <algorithm>
#include <optional>

namespace zonstory {

namespace {

// Several words in one.
constexpr unsigned Set(SlateWord word) {
    return 1U << static_cast<unsigned>(word);
}

// A word cut off the end of letters, and the set-up or nothing that stays: ATK is A and TK, APU is A and PU.
struct Cut {
    std::string_view setUp;
    SlateWord word;
};

std::optional<Cut> CutOff(std::string_view letters, unsigned words) {
    for (std::size_t length = 0; length <= 3 && length < letters.size(); ++length) {
        const std::string_view setUp = letters.substr(0, length);
        const SlateWord word = MeaningOf(letters.substr(length));
        if ((length == 0 || IsSetUp(setUp.substr(length > 2 ? 1 : 0))) && (words & Set(word)) != 0) {
            return Cut{setUp, word};
        }
    }
    return std::nullopt;
}

bool IsAscii(std::string_view letters) {
    return std::all_of(letters.begin(), letters.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

} // namespace

bool IsSceneWord(SlateWord word) {
    return word == SlateWord::Scene || word == SlateWord::Sequence || word == SlateWord::Scenes;
}

SlateWord BelowScene(std::string_view letters) {
    return letters == "P" || letters == "E" || letters == "C" || letters == "I" ? SlateWord::Shot : SlateWord::Unknown;
}

bool ReadFront(std::string_view letters, bool sceneInFront, NamedNumber& number) {
    const SlateWord whole = letters == "SEC" ? SlateWord::Sequence : MeaningOf(letters); // seconds only behind a number
    const SlateWord word = whole == SlateWord::Unknown && sceneInFront ? BelowScene(letters) : whole;
    number.counted = false;
    if (word != SlateWord::Unknown) {
        number.word = word;
        return word != SlateWord::Unit && word != SlateWord::Against;
    }
    const SlateWord front = MeaningOf(letters.substr(0, letters.size() - 1));
    const bool inserted = letters.size() > 1 && (front == SlateWord::Scene || front == SlateWord::Sequence);
    if (inserted && letters.back() != 'T') { // ScA12, SA12-T3
        number.word = front;
        number.prefix = letters.back();
        return true;
    }
    if (letters == "E" || letters == "D" || letters == "J") { // an episode, a day; A12's like only in stories
        number.apart = letters;
    }
    number.prefix = letters;
    return letters.size() <= 2 && IsAscii(letters);
}

bool ReadMiddle(std::string_view letters, NamedNumber& number, NamedNumber& next) {
    const bool below = BelowScene(letters) != SlateWord::Unknown;
    if (letters == "E" && number.prefix == "B") { // B28E02T04, Bild and Einstellung
        number.word = SlateWord::Sequence;
        number.prefix.clear();
    }
    if (below && IsSceneWord(number.word)) {
        next.word = SlateWord::Shot;
        return true;
    }
    if (!number.prefix.empty() && IsSceneWord(MeaningOf(letters))) { // E01S12T03
        next.word = MeaningOf(letters);
        return true;
    }
    constexpr unsigned kBetween = Set(SlateWord::Shot) | Set(SlateWord::Slate) | Set(SlateWord::Remark);
    constexpr unsigned kCounter = Set(SlateWord::Counter);
    const bool part = letters.size() == 3 && letters.ends_with("PT"); // 12Apt2, not set-up AP and its take
    for (const unsigned words : {part ? kCounter : 0, Set(SlateWord::Take), kBetween, kCounter}) {
        if (const std::optional<Cut> cut = CutOff(letters, words)) {
            number.letters = cut->setUp;
            next.word = cut->word;
            return true;
        }
    }
    if (below && number.word == SlateWord::Shot) { // S01P01P01
        next.word = SlateWord::Take;
        return true;
    }
    number.letters = letters;
    return IsSetUp(letters);
}

// A set-up of up to two letters and one of the number's own, or a remark.
bool ReadBack(std::string_view letters, NamedNumber& number) {
    const std::optional<Cut> cut = letters.size() > 1 ? CutOff(letters, Set(SlateWord::Remark)) : std::nullopt;
    if (cut) {
        number.letters = cut->setUp;
        number.unread = letters.size() <= 3 ? letters : std::string_view();
        return true;
    }
    number.letters = letters;
    return letters.size() <= 3 && IsAscii(letters) && MeaningOf(letters) != SlateWord::Unit &&
           (letters.size() < 3 || MeaningOf(letters) == SlateWord::Unknown);
}

} // namespace zonstory

#include "fountain/LineKinds.h"

#include <algorithm>
#include <cstddef>

#include <zonstoryparser/Story.h>

#include "fountain/Characters.h"
#include "fountain/Emphasis.h"

namespace zonscreenplay::fountain {

namespace {

constexpr std::string_view kHeadingWords[] = {"INT", "EXT", "EST", "INT/EXT", "EXT/INT", "I/E", "E/I", "I./E", "E./I"};
constexpr std::int32_t kOpeningBracket = '(';
constexpr std::int32_t kClosingBracket = ')';
constexpr std::int32_t kWideOpeningBracket = 0xFF08;
constexpr std::int32_t kWideClosingBracket = 0xFF09;

// What stands behind a setting's word: dots and blanks, also of scripts whose characters are wide.
constexpr std::string_view kBehindSettings[] = {".", " ", "\t", "\u00a0", "\u3000", "\u3002", "\uff0e", "\uff61"};

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

char CapitalOf(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool StartsWithWord(std::string_view line, std::string_view word) {
    return line.size() > word.size() && std::equal(word.begin(), word.end(), line.begin(),
                                                   [](char known, char ofLine) { return known == CapitalOf(ofLine); });
}

bool IsOpening(std::int32_t character) {
    return character == kOpeningBracket || character == kWideOpeningBracket;
}

bool IsClosing(std::int32_t character) {
    return character == kClosingBracket || character == kWideClosingBracket;
}

bool HasSmallLetter(std::string_view text) {
    while (!text.empty()) {
        if (IsSmall(TakeCharacter(text))) {
            return true;
        }
    }
    return false;
}

template <typename Words>
bool AnyOf(const Words& words, std::string_view text, bool (*matches)(std::string_view, std::string_view)) {
    return std::any_of(std::begin(words), std::end(words), [&](std::string_view word) { return matches(text, word); });
}

std::size_t SettingLength(std::string_view line) {
    constexpr std::size_t kMostOfSetting = 16;
    const auto isForeign = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
    const std::string_view head = line.substr(0, kMostOfSetting);
    const auto end = std::find_if(head.begin(), head.end(), isForeign);
    return zonstoryparser::SceneSettingLength(zoncore::UString(head.begin(), end));
}

// The hash that opens a number whose closing hash is the last character; npos when there is none.
std::size_t FindNumber(std::string_view heading) {
    if (heading.size() < 2 || heading.back() != '#' || IsEscaped(heading, heading.size() - 1)) {
        return std::string_view::npos;
    }
    std::size_t open = heading.rfind('#', heading.size() - 2);
    while (open != std::string_view::npos && IsEscaped(heading, open)) {
        open = open == 0 ? std::string_view::npos : heading.rfind('#', open - 1);
    }
    return open;
}

// Letters, digits, dots and dashes; any other character behind a backslash. Empty when it is no number.
std::string ReadNumber(std::string_view marked) {
    std::string number;
    while (!marked.empty()) {
        const bool isProtected = marked.front() == '\\' && marked.size() > 1;
        marked.remove_prefix(isProtected ? 1 : 0);
        const std::string_view before = marked;
        const std::int32_t character = TakeCharacter(marked);
        if (!isProtected && character != '.' && character != '-' && !IsLetterOrDigit(character)) {
            return {};
        }
        number += before.substr(0, before.size() - marked.size());
    }
    return number;
}

// Nothing but brackets and what they hold: "(V.O.) (CONT'D)".
bool IsExtension(std::string_view text) {
    std::size_t depth = 0;
    while (!text.empty()) {
        const std::int32_t character = TakeCharacter(text);
        depth += IsOpening(character) ? 1 : 0;
        if (depth == 0 && !IsSpace(character)) {
            return false;
        }
        depth -= IsClosing(character) ? 1 : 0;
    }
    return true;
}

// At the end or in front of an extension, where many put it.
std::size_t FindDualMark(std::string_view cue) {
    const std::size_t mark = cue.rfind('^');
    const bool isMark = mark != std::string_view::npos && !IsEscaped(cue, mark) && IsExtension(cue.substr(mark + 1));
    return isMark ? mark : std::string_view::npos;
}

} // namespace

bool IsHeading(std::string_view line) {
    return AnyOf(kHeadingWords, line, [](std::string_view text, std::string_view word) {
        return StartsWithWord(text, word) && std::string_view(". \t").find(text[word.size()]) != std::string_view::npos;
    });
}

bool IsForcedHeading(std::string_view line) {
    if (!StartsWith(line, ".")) {
        return false;
    }
    line.remove_prefix(1);
    if (line == "##" || (FindNumber(line) == 0 && !SplitNumber(line).number.empty())) {
        return true;
    }
    line.remove_prefix(std::min(line.find_first_not_of("*_"), line.size()));
    if (line.size() > 1 && line[0] == '\\' && IsEscapable(line[1])) {
        return true;
    }
    const std::int32_t first = line.empty() ? ' ' : TakeCharacter(line);
    return IsLetterOrDigit(first) || (!IsSpace(first) && first >= 0x80);
}

bool IsHeadingOfKnownSetting(std::string_view line) {
    if (HasSmallLetter(line)) {
        return false; // first, for it tells most lines after a few characters
    }
    const std::size_t length = SettingLength(line);
    return length > 0 && (line[length - 1] == '.' || AnyOf(kBehindSettings, line.substr(length), StartsWith));
}

bool IsHeadingInCapitals(std::string_view line) {
    return IsHeading(line) && !HasSmallLetter(line);
}

bool IsTransition(std::string_view line) {
    return EndsWith(line, "TO:") && !HasSmallLetter(line);
}

bool IsCentred(std::string_view line) {
    return line.size() > 1 && line.front() == '>' && line.back() == '<' && !IsEscaped(line, line.size() - 1);
}

bool IsPageBreak(std::string_view line) {
    return line.size() >= 3 && line.find_first_not_of('=') == std::string_view::npos;
}

bool IsCue(std::string_view line) {
    std::size_t depth = 0;
    bool hasCapital = false;
    while (!line.empty()) {
        const std::int32_t character = TakeCharacter(line);
        if (IsOpening(character)) {
            ++depth;
        } else if (IsClosing(character)) {
            depth -= depth > 0 ? 1 : 0;
        } else if (depth == 0 && IsSmall(character)) {
            return false;
        } else {
            hasCapital = hasCapital || (depth == 0 && IsCapital(character));
        }
    }
    return hasCapital;
}

bool IsParenthetical(std::string_view line) {
    std::size_t depth = 0;
    while (!line.empty()) {
        const std::int32_t character = TakeCharacter(line);
        depth += IsOpening(character) ? 1 : 0;
        if (depth == 0) {
            return false; // something stands in front
        }
        depth -= IsClosing(character) ? 1 : 0;
        if (depth == 0) {
            return line.empty();
        }
    }
    return false; // never closed
}

NumberedHeading SplitNumber(std::string_view heading) {
    const std::size_t open = FindNumber(heading);
    if (open == std::string_view::npos) {
        return {heading, {}};
    }
    std::string number = ReadNumber(heading.substr(open + 1, heading.size() - open - 2));
    return number.empty() ? NumberedHeading{heading, {}}
                          : NumberedHeading{WithoutTrailingBlanks(heading.substr(0, open)), std::move(number)};
}

Cue ReadCue(std::string_view cue) {
    const std::size_t mark = FindDualMark(cue);
    Cue read;
    AppendPlainText(WithoutBlanks(cue.substr(0, mark)), read.text);
    if (mark == std::string_view::npos) {
        return read;
    }
    read.isDual = true;
    const std::string_view extension = WithoutBlanks(cue.substr(mark + 1));
    read.text += extension.empty() ? "" : " ";
    AppendPlainText(extension, read.text);
    return read;
}

} // namespace zonscreenplay::fountain

#include "fountain/Markup.h"

#include <algorithm>

#include "fountain/Characters.h"
#include "fountain/Emphasis.h"
#include "fountain/LineKinds.h"
#include "fountain/TitlePage.h"

namespace zonscreenplay::fountain {

namespace {

constexpr std::string_view kStructureMarks = "#=";
constexpr std::string_view kLineMarks = "!>~";

bool IsOneOf(char byte, std::string_view some) {
    return some.find(byte) != std::string_view::npos;
}

std::string Plain(std::string_view line) {
    std::string plain;
    AppendPlainText(line, plain);
    return plain;
}

// The second half of what would open a note or a boneyard.
std::string WithNothingHidden(std::string_view text) {
    std::string escaped;
    char before = '\0';
    for (const char byte : text) {
        escaped += (before == '[' && byte == '[') || (before == '/' && byte == '*') ? "\\" : "";
        escaped += byte;
        before = byte;
    }
    return escaped;
}

std::string WithoutMarks(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        escaped += IsOneOf(byte, "*_\\[") ? "\\" : "";
        escaped += byte;
    }
    return escaped;
}

std::string AllEscaped(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        escaped += IsEscapable(byte) ? "\\" : "";
        escaped += byte;
    }
    return escaped;
}

std::string EscapedNumber(std::string_view number) {
    std::string escaped;
    while (!number.empty()) {
        const std::string_view before = number;
        const std::int32_t character = TakeCharacter(number);
        escaped += character == '.' || character == '-' || IsLetterOrDigit(character) ? "" : "\\";
        escaped += before.substr(0, before.size() - number.size());
    }
    return escaped;
}

bool IsStructure(std::string_view line) {
    return IsOneOf(line.front(), kStructureMarks) || IsPageBreak(line);
}

bool IsHeadingOfAnyKind(std::string_view line) {
    const bool isEmphasized = IsOneOf(line.front(), "*_") && IsHeading(WithoutEmphasis(line));
    return IsHeading(line) || isEmphasized || IsForcedHeading(line) || IsHeadingOfKnownSetting(line);
}

bool IsTitle(std::string_view line, std::string_view next) {
    return BeginsTitlePage({line, 1, false}, {next, 2, false});
}

bool ReadsAsHeading(std::string_view line, std::string_view text, std::string_view number) {
    const bool isForced = IsForcedHeading(line);
    const NumberedHeading read = SplitNumber(line.substr(isForced ? 1 : 0));
    return (isForced || IsHeading(line)) && read.number == number && Plain(read.text) == text;
}

bool ReadsAsCue(std::string_view line, std::string_view text, bool isDual) {
    const Cue read = ReadCue(line);
    return read.text == text && read.isDual == isDual;
}

bool IsUnforcedCue(std::string_view line, std::string_view text, bool isDual) {
    return !IsStructure(line) && !IsOneOf(line.front(), kLineMarks) && line.front() != '@' && IsCue(line) &&
           !IsHeadingOfAnyKind(line) && !IsTransition(line) && ReadsAsCue(line, text, isDual);
}

bool IsDialogue(std::string_view line) {
    return line.front() != '~' && !IsParenthetical(line) && !IsPageBreak(line);
}

bool IsUnforcedTransition(std::string_view line) {
    return !IsStructure(line) && !IsOneOf(line.front(), kLineMarks) && line.front() != '@' &&
           !IsHeadingOfAnyKind(line) && IsTransition(line);
}

} // namespace

std::string Escaped(std::string_view text) {
    std::string escaped = WithNothingHidden(text);
    return Plain(escaped) == text ? escaped : WithoutMarks(text);
}

std::string HeadingLine(std::string_view text, std::string_view number) {
    const std::string end = number.empty() ? "" : "#" + EscapedNumber(number) + "#";
    if (text.empty()) {
        return number.empty() ? ".##" : "." + end;
    }
    const std::string tail = end.empty() ? "" : " " + end;
    const std::string line = Escaped(text) + tail;
    for (const std::string& candidate : {line, "." + line}) {
        if (ReadsAsHeading(candidate, text, number)) {
            return candidate;
        }
    }
    return "." + AllEscaped(text) + tail;
}

std::string CueLine(std::string_view text, bool isDual, bool isFollowed, bool isTop) {
    const std::string tail = isDual ? " ^" : "";
    std::string line = Escaped(text) + tail;
    if (isFollowed && IsUnforcedCue(line, text, isDual) && !(isTop && IsTitle(line, {}))) {
        return line;
    }
    return "@" + (ReadsAsCue(line, text, isDual) ? line : AllEscaped(text) + tail);
}

std::string TransitionLine(std::string_view text, bool isTop) {
    std::string line = Escaped(text);
    if (IsUnforcedTransition(line) && !(isTop && IsTitle(line, {}))) {
        return line;
    }
    const std::string forced = "> " + line;
    return IsCentred(forced) ? "> " + AllEscaped(text) : forced;
}

std::string ParentheticalLine(std::string_view text) {
    std::string line = Escaped(text);
    std::string bracketed = "(" + line + ")";
    if (IsParenthetical(line)) {
        return line;
    }
    return IsParenthetical(bracketed) ? bracketed : DialogueLine(text);
}

std::string DialogueLine(std::string_view text) {
    for (const std::string& candidate : {Escaped(text), AllEscaped(text)}) {
        if (IsDialogue(candidate)) {
            return candidate;
        }
    }
    return "~ " + Escaped(text);
}

std::string ActionLine(std::string_view text, bool isFirst, std::string_view next, bool isTop) {
    std::string line = Escaped(text);
    const std::string_view bare = WithoutBlanks(line);
    if (bare.empty()) {
        return "!";
    }
    const bool isElement = isFirst && (bare.front() == '@' || IsHeadingOfAnyKind(bare) || IsTransition(bare) ||
                                       (!next.empty() && IsCue(bare)) || (isTop && IsTitle(line, next)));
    return isElement || IsStructure(bare) || IsOneOf(bare.front(), kLineMarks) ? "!" + line : line;
}

} // namespace zonscreenplay::fountain

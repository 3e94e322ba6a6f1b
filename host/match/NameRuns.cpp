#include "match/NameRuns.h"

#include <algorithm>
#include <limits>

namespace zonstory {

namespace {

using Byte = unsigned char;

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || static_cast<Byte>(c) >= 0x80;
}

// The capital without accent of the letter U+00C0 + `index`, or 0 for those that have none in ASCII.
char PlainLatinLetter(Byte index) {
    constexpr std::string_view kLetters = "AAAAAAACEEEEIIIIDNOOOOOXOUUUUYTSAAAAAAACEEEEIIIIDNOOOOO/OUUUUYTY";
    static_assert(kLetters.size() == 64);
    return kLetters[index];
}

// Combining accents U+0300 to U+036F, as some file systems write "è".
bool IsCombiningAccent(Byte first, Byte second) {
    return (first == 0xCC && second >= 0x80) || (first == 0xCD && second >= 0x80 && second <= 0xAF);
}

// Dashes and blanks outside ASCII, which separate like their plain kin; 0 for any other character of three bytes.
char PlainSeparator(std::string_view character) {
    const bool dash = character >= "\xE2\x80\x90" && character <= "\xE2\x80\x95";
    const bool blank = (character >= "\xE2\x80\x80" && character <= "\xE2\x80\x8B") || character == "\xE2\x80\xAF" ||
                       character == "\xE3\x80\x80";
    return dash ? '-' : blank ? ' ' : '\0';
}

std::string Fold(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    for (std::size_t at = 0; at < name.size(); ++at) {
        const char c = name[at];
        if (c >= 'a' && c <= 'z') {
            folded += static_cast<char>(c - 'a' + 'A');
            continue;
        }
        const Byte first = static_cast<Byte>(c);
        const Byte second = at + 1 < name.size() ? static_cast<Byte>(name[at + 1]) : Byte{0};
        if (first == 0xC3 && second >= 0x80 && second <= 0xBF) {
            folded += PlainLatinLetter(static_cast<Byte>(second - 0x80));
            ++at;
        } else if (IsCombiningAccent(first, second)) {
            ++at;
        } else if (first == 0xC2 && second >= 0xA0 && second <= 0xBF) { // the blank that does not break, "n°"
            folded += ' ';
            ++at;
        } else if (const char plain = first < 0xE2 ? '\0' : PlainSeparator(name.substr(at, 3))) {
            folded += plain;
            at += 2;
        } else {
            folded += c;
        }
    }
    return folded;
}

std::uint32_t Value(std::string_view digits) {
    std::uint64_t value = 0;
    for (const char digit : digits) {
        value = std::min<std::uint64_t>(value * 10 + static_cast<std::uint64_t>(digit - '0'),
                                        std::numeric_limits<std::uint32_t>::max());
    }
    return static_cast<std::uint32_t>(value);
}

} // namespace

NameRuns::NameRuns(std::string_view name) : mText(Fold(name.substr(0, kMostRuns * 64))) {
    std::size_t previousEnd = std::string::npos;
    for (std::size_t at = 0; at < mText.size();) {
        const bool digits = IsDigit(mText[at]);
        if (!digits && !IsLetter(mText[at])) {
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        while (end < mText.size() && (digits ? IsDigit(mText[end]) : IsLetter(mText[end]))) {
            ++end;
        }
        if (mRuns.size() == kMostRuns) {
            mRuns.clear();
            return;
        }
        NameRun run;
        run.begin = static_cast<std::uint32_t>(at);
        run.end = static_cast<std::uint32_t>(end);
        run.value = digits ? Value(std::string_view(mText).substr(at, end - at)) : 0;
        run.digits = digits;
        run.glued = at == previousEnd;
        mRuns.push_back(run);
        previousEnd = at = end;
    }
}

std::string_view NameRuns::Text(std::size_t run) const {
    return std::string_view(mText).substr(mRuns[run].begin, Length(run));
}

std::string_view NameRuns::Separator(std::size_t run) const {
    if (run == 0 || run >= mRuns.size()) {
        return {};
    }
    return std::string_view(mText).substr(mRuns[run - 1].end, mRuns[run].begin - mRuns[run - 1].end);
}

std::size_t NameRuns::ChunkEnd(std::size_t run) const {
    std::size_t end = run + 1;
    while (end < mRuns.size() && mRuns[end].glued) {
        ++end;
    }
    return end;
}

bool AreDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::string_view WithoutLeadingZeros(std::string_view digits) {
    return digits.empty() ? digits : digits.substr(std::min(digits.find_first_not_of('0'), digits.size() - 1));
}

} // namespace zonstory

#include "story/WordCount.h"

#include <string_view>

#include <boost/nowide/utf/utf.hpp>
#include <utf8proc.h>

namespace zonstory {

namespace {

namespace utf = boost::nowide::utf;

enum class Kind { WordCharacter, Ideograph, Mark, Joiner, Separator };

struct Range {
    utf::code_point first;
    utf::code_point last;
};

// Scripts without blanks between words.
constexpr Range kIdeographs[] = {
    {0x3005, 0x3007}, {0x3021, 0x3029}, {0x3031, 0x3035}, {0x3041, 0x30FA}, {0x30FC, 0x30FF},   {0x31F0, 0x31FF},
    {0x3400, 0x4DBF}, {0x4E00, 0x9FFF}, {0xF900, 0xFAFF}, {0xFF66, 0xFF9D}, {0x1B000, 0x1B16F}, {0x20000, 0x3FFFD},
};

constexpr std::u16string_view kJoiners = u"'’-‐‑.,:@&_·";

bool IsIdeograph(utf::code_point codePoint) {
    for (const Range& range : kIdeographs) {
        if (codePoint >= range.first && codePoint <= range.last) {
            return true;
        }
    }
    return false;
}

Kind KindOf(utf::code_point codePoint) {
    if (codePoint <= 0xFFFF && kJoiners.find(static_cast<char16_t>(codePoint)) != std::u16string_view::npos) {
        return Kind::Joiner;
    }
    if (IsIdeograph(codePoint)) {
        return Kind::Ideograph;
    }
    const utf8proc_category_t category = utf8proc_category(static_cast<utf8proc_int32_t>(codePoint));
    if (category >= UTF8PROC_CATEGORY_MN && category <= UTF8PROC_CATEGORY_ME) {
        return Kind::Mark;
    }
    const bool isLetter = category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO;
    const bool isNumber = category >= UTF8PROC_CATEGORY_ND && category <= UTF8PROC_CATEGORY_NO;
    return isLetter || isNumber ? Kind::WordCharacter : Kind::Separator;
}

} // namespace

std::size_t CountWords(const zoncore::UString& text) {
    std::size_t count = 0;
    bool inWord = false; // a letter or digit comes before, perhaps with one joiner between
    bool afterJoiner = false;
    const char16_t* position = text.data();
    const char16_t* const end = position + text.size();
    while (position != end) {
        const utf::code_point codePoint = utf::utf_traits<char16_t>::decode(position, end);
        const bool isValid = codePoint != utf::illegal && codePoint != utf::incomplete;
        switch (isValid ? KindOf(codePoint) : Kind::Separator) {
        case Kind::WordCharacter:
            count += inWord ? 0 : 1;
            inWord = true;
            afterJoiner = false;
            break;
        case Kind::Ideograph:
            ++count;
            inWord = false;
            break;
        case Kind::Mark:
            break;
        case Kind::Joiner:
            inWord = inWord && !afterJoiner;
            afterJoiner = true;
            break;
        case Kind::Separator:
            inWord = false;
            break;
        }
    }
    return count;
}

} // namespace zonstory

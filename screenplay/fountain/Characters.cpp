#include "fountain/Characters.h"

#include <cstddef>

#include <utf8proc.h>

namespace zonscreenplay::fountain {

namespace {

constexpr std::string_view kBlanks[] = {" ", "\t", "\u00a0", "\u3000"};
constexpr std::int32_t kSharpS = 0xDF;

bool IsASCII(std::int32_t character) {
    return character >= 0 && character < 0x80;
}

bool IsBetween(std::int32_t character, char first, char last) {
    return character >= first && character <= last;
}

bool IsInCategories(std::int32_t character, utf8proc_category_t first, utf8proc_category_t last) {
    const utf8proc_category_t category = utf8proc_category(character);
    return category >= first && category <= last;
}

bool IsASCIIPunctuation(std::int32_t character) {
    return IsBetween(character, '!', '/') || IsBetween(character, ':', '@') || IsBetween(character, '[', '`') ||
           IsBetween(character, '{', '~');
}

// Most lines begin and end with a letter: no look at what each kind of blank is made of.
bool IsPrintingASCII(char byte) {
    return byte > ' ' && byte <= '~';
}

std::size_t LeadingBlank(std::string_view text) {
    if (text.empty() || IsPrintingASCII(text.front())) {
        return 0;
    }
    for (const std::string_view blank : kBlanks) {
        if (text.substr(0, blank.size()) == blank) {
            return blank.size();
        }
    }
    return 0;
}

std::size_t TrailingBlank(std::string_view text) {
    if (text.empty() || IsPrintingASCII(text.back())) {
        return 0;
    }
    for (const std::string_view blank : kBlanks) {
        if (text.size() >= blank.size() && text.substr(text.size() - blank.size()) == blank) {
            return blank.size();
        }
    }
    return 0;
}

} // namespace

std::int32_t TakeCharacter(std::string_view& text) {
    std::int32_t character = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    if (!IsASCII(character)) {
        const utf8proc_ssize_t found = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                        static_cast<utf8proc_ssize_t>(text.size()), &character);
        length = found > 0 ? static_cast<std::size_t>(found) : 1;
    }
    text.remove_prefix(length);
    return character;
}

std::int32_t LastCharacter(std::string_view text) {
    std::size_t start = text.size() - 1;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) {
        --start;
    }
    text.remove_prefix(start);
    return TakeCharacter(text);
}

bool IsLetterOrDigit(std::int32_t character) {
    if (IsASCII(character)) {
        return IsBetween(character, 'a', 'z') || IsBetween(character, 'A', 'Z') || IsBetween(character, '0', '9');
    }
    return IsInCategories(character, UTF8PROC_CATEGORY_LU, UTF8PROC_CATEGORY_LO) ||
           IsInCategories(character, UTF8PROC_CATEGORY_ND, UTF8PROC_CATEGORY_NO);
}

bool IsCapital(std::int32_t character) {
    return IsASCII(character) ? IsBetween(character, 'A', 'Z')
                              : IsInCategories(character, UTF8PROC_CATEGORY_LU, UTF8PROC_CATEGORY_LU);
}

bool IsSmall(std::int32_t character) {
    return IsASCII(character)
               ? IsBetween(character, 'a', 'z')
               : IsInCategories(character, UTF8PROC_CATEGORY_LL, UTF8PROC_CATEGORY_LL) && character != kSharpS;
}

bool IsSpace(std::int32_t character) {
    return IsASCII(character) ? character == ' ' || IsBetween(character, '\t', '\r')
                              : IsInCategories(character, UTF8PROC_CATEGORY_ZS, UTF8PROC_CATEGORY_ZP);
}

bool IsPunctuation(std::int32_t character) {
    return IsASCII(character) ? IsASCIIPunctuation(character)
                              : IsInCategories(character, UTF8PROC_CATEGORY_PC, UTF8PROC_CATEGORY_SO);
}

bool IsEscapable(char byte) {
    return IsASCIIPunctuation(static_cast<unsigned char>(byte));
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    while (const std::size_t length = LeadingBlank(text)) {
        text.remove_prefix(length);
    }
    return text;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (const std::size_t length = TrailingBlank(text)) {
        text.remove_suffix(length);
    }
    return text;
}

std::string_view WithoutBlanks(std::string_view text) {
    return WithoutTrailingBlanks(WithoutLeadingBlanks(text));
}

} // namespace zonscreenplay::fountain

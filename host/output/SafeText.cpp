#include "output/SafeText.h"

#include <fmt/format.h>
#include <utf8proc.h>

namespace zonstory {

namespace {

bool IsDirectionOverride(utf8proc_int32_t codePoint) {
    return (codePoint >= 0x202A && codePoint <= 0x202E) || (codePoint >= 0x2066 && codePoint <= 0x2069);
}

bool IsHarmful(utf8proc_int32_t codePoint) {
    return utf8proc_category(codePoint) == UTF8PROC_CATEGORY_CC || codePoint == 0x2028 || codePoint == 0x2029 ||
           IsDirectionOverride(codePoint);
}

std::string Escaped(utf8proc_int32_t codePoint) {
    switch (codePoint) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return codePoint < 0x100 ? fmt::format("\\x{:02x}", codePoint) : fmt::format("\\u{:04x}", codePoint);
    }
}

// Copies the text, with every byte that is no UTF-8 and every character that `isUnwanted` picks escaped.
template <typename Predicate>
std::string Escape(std::string_view text, Predicate isUnwanted) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        utf8proc_int32_t codePoint = -1;
        const utf8proc_ssize_t length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
        if (length <= 0) {
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(text.front()));
            text.remove_prefix(1);
            continue;
        }
        const std::string_view character = text.substr(0, static_cast<std::size_t>(length));
        result += isUnwanted(codePoint) ? Escaped(codePoint) : std::string(character);
        text.remove_prefix(character.size());
    }
    return result;
}

} // namespace

std::string SafeLine(std::string_view text) {
    return Escape(text, IsHarmful);
}

std::string SafeLines(std::string_view text) {
    return Escape(text, [](utf8proc_int32_t codePoint) {
        return codePoint != '\n' && codePoint != '\t' && IsHarmful(codePoint);
    });
}

std::string SafePage(std::string_view text) {
    return Escape(text, [](utf8proc_int32_t codePoint) {
        return codePoint != '\n' && codePoint != '\t' && utf8proc_category(codePoint) == UTF8PROC_CATEGORY_CC;
    });
}

std::string ValidUTF8(std::string_view bytes) {
    return Escape(bytes, [](utf8proc_int32_t) { return false; });
}

} // namespace zonstory

#include "output/DisplayWidth.h"

#include <algorithm>

#include <utf8proc.h>

namespace zonstory {

namespace {

constexpr utf8proc_int32_t kEmojiPresentation = 0xFE0F; // turns "❤" into a two-cell emoji

bool IsASCII(std::string_view line) {
    return std::all_of(line.begin(), line.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace

// What a reader sees as one character takes the cells of its widest part.
std::size_t DisplayWidth(std::string_view line) {
    if (IsASCII(line)) {
        return line.size();
    }
    std::size_t total = 0;
    int character = 0;
    utf8proc_int32_t previous = -1;
    utf8proc_int32_t breakState = 0;
    while (!line.empty()) {
        utf8proc_int32_t codePoint = 0;
        const utf8proc_ssize_t length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(line.data()),
                                                         static_cast<utf8proc_ssize_t>(line.size()), &codePoint);
        line.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
        codePoint = length > 0 ? codePoint : 0xFFFD;
        if (previous >= 0 && utf8proc_grapheme_break_stateful(previous, codePoint, &breakState)) {
            total += static_cast<std::size_t>(character);
            character = 0;
        }
        character = std::max(character, codePoint == kEmojiPresentation ? 2 : utf8proc_charwidth(codePoint));
        previous = codePoint;
    }
    return total + static_cast<std::size_t>(character);
}

} // namespace zonstory

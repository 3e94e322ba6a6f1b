#pragma once

#include <string>

#include <zoncore/UString.h>

namespace support {

/// Text as the bytes of UTF-16, with a byte order mark or without.
inline std::string InUTF16(const std::string& utf8, bool isBigEndian, bool hasMark = true) {
    std::string bytes;
    for (const char16_t unit : (hasMark ? u"\uFEFF" : u"") + zoncore::UTF8to16(utf8)) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += isBigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

} // namespace support

#include "text/ForeignText.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include <boost/nowide/utf/utf.hpp>
#include <zoncore/UString.h>

namespace zonstory {

namespace {

namespace utf = boost::nowide::utf;

constexpr std::string_view kUTF8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

// The characters of Windows-1252 that Latin-1 does not have, 0x80 to 0x9F; 0 where it leaves the control character.
constexpr char16_t kWindows[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                                 0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::string FromUTF16(std::string_view bytes, TextEncoding order) {
    zoncore::UString units;
    units.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        units += static_cast<char16_t>(order == TextEncoding::UTF16Little ? second << 8 | first : first << 8 | second);
    }
    return zoncore::UTF16to8(units);
}

std::string ToUTF16(std::string_view utf8, TextEncoding order) {
    std::string bytes;
    for (const char16_t unit : zoncore::UTF8to16(std::string(utf8))) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += order == TextEncoding::UTF16Little ? low : high;
        bytes += order == TextEncoding::UTF16Little ? high : low;
    }
    return bytes;
}

char16_t FromWindows1252(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    const char16_t windows = value >= 0x80 && value < 0xA0 ? kWindows[value - 0x80] : u'\0';
    return windows != 0 ? windows : static_cast<char16_t>(value);
}

std::string FromWindows1252(std::string_view bytes) {
    zoncore::UString units(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), units.begin(), [](char byte) { return FromWindows1252(byte); });
    return zoncore::UTF16to8(units);
}

// Such files begin with words in ASCII, so without a mark one of the first two bytes of UTF-16 is zero.
std::optional<TextEncoding> FindOrder(std::string_view bytes) {
    if (bytes.size() < 2 || (bytes[0] == '\0') == (bytes[1] == '\0')) {
        return std::nullopt;
    }
    return bytes[0] == '\0' ? TextEncoding::UTF16Big : TextEncoding::UTF16Little;
}

bool IsUTF8(std::string_view bytes) {
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end) {
        const utf::code_point character = utf::utf_traits<char>::decode(position, end);
        if (character == utf::illegal || character == utf::incomplete) {
            return false;
        }
    }
    return true;
}

// The byte of a character, or nothing; a byte above 0x7F without a meaning stands for the control character.
std::optional<char> WindowsByte(char16_t unit) {
    const auto* const found = std::find(std::begin(kWindows), std::end(kWindows), unit);
    if (found != std::end(kWindows) && unit != 0) {
        return static_cast<char>(0x80 + (found - std::begin(kWindows)));
    }
    return unit < 0x100 ? std::optional(static_cast<char>(unit)) : std::nullopt;
}

std::optional<std::string> ToExactWindows1252(std::string_view utf8) {
    std::string bytes;
    for (const char16_t unit : zoncore::UTF8to16(std::string(utf8))) {
        const std::optional<char> byte = WindowsByte(unit);
        if (!byte || FromWindows1252(*byte) != unit) {
            return std::nullopt;
        }
        bytes += *byte;
    }
    return bytes;
}

} // namespace

TextForm FindTextForm(std::string_view bytes) {
    if (bytes.starts_with(kUTF8Mark)) {
        const bool isUTF8 = IsUTF8(bytes.substr(kUTF8Mark.size()));
        return {isUTF8 ? TextEncoding::UTF8 : TextEncoding::Windows1252, kUTF8Mark.size()};
    }
    if (bytes.starts_with(kLittleEndianMark)) {
        return {TextEncoding::UTF16Little, kLittleEndianMark.size()};
    }
    if (bytes.starts_with(kBigEndianMark)) {
        return {TextEncoding::UTF16Big, kBigEndianMark.size()};
    }
    if (const auto order = FindOrder(bytes)) {
        return {*order, 0};
    }
    return {IsUTF8(bytes) ? TextEncoding::UTF8 : TextEncoding::Windows1252, 0};
}

std::string DecodeText(std::string_view bytes, TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::UTF16Little:
    case TextEncoding::UTF16Big:
        return FromUTF16(bytes, encoding);
    case TextEncoding::Windows1252:
        return FromWindows1252(bytes);
    case TextEncoding::UTF8:
        break;
    }
    return std::string(bytes);
}

std::optional<std::string> EncodeText(std::string_view utf8, TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::UTF16Little:
    case TextEncoding::UTF16Big:
        return ToUTF16(utf8, encoding);
    case TextEncoding::Windows1252:
        return ToExactWindows1252(utf8);
    case TextEncoding::UTF8:
        break;
    }
    return std::string(utf8);
}

std::string ForeignToUTF8(std::string_view bytes) {
    const TextForm form = FindTextForm(bytes);
    return DecodeText(bytes.substr(form.mark), form.encoding);
}

std::string ToWindows1252(std::string_view utf8) {
    std::string bytes;
    for (const char16_t unit : zoncore::UTF8to16(std::string(utf8))) {
        bytes += WindowsByte(unit).value_or('?');
    }
    return bytes;
}

} // namespace zonstory

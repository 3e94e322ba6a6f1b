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

enum class Order { Little, Big };

std::string FromUTF16(std::string_view bytes, Order order) {
    zoncore::UString units;
    units.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        units += static_cast<char16_t>(order == Order::Little ? second << 8 | first : first << 8 | second);
    }
    return zoncore::UTF16to8(units);
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
std::optional<Order> FindOrder(std::string_view bytes) {
    if (bytes.size() < 2 || (bytes[0] == '\0') == (bytes[1] == '\0')) {
        return std::nullopt;
    }
    return bytes[0] == '\0' ? Order::Big : Order::Little;
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

} // namespace

std::string ForeignToUTF8(std::string_view bytes) {
    if (bytes.starts_with(kUTF8Mark)) {
        bytes.remove_prefix(kUTF8Mark.size());
        return IsUTF8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
    }
    if (bytes.starts_with(kLittleEndianMark)) {
        return FromUTF16(bytes.substr(2), Order::Little);
    }
    if (bytes.starts_with(kBigEndianMark)) {
        return FromUTF16(bytes.substr(2), Order::Big);
    }
    if (const auto order = FindOrder(bytes)) {
        return FromUTF16(bytes, *order);
    }
    return IsUTF8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
}

std::string ToWindows1252(std::string_view utf8) {
    std::string bytes;
    for (const char16_t unit : zoncore::UTF8to16(std::string(utf8))) {
        const auto* const found = std::find(std::begin(kWindows), std::end(kWindows), unit);
        if (found != std::end(kWindows) && unit != 0) {
            bytes += static_cast<char>(0x80 + (found - std::begin(kWindows)));
        } else {
            bytes += unit < 0x100 ? static_cast<char>(unit) : '?';
        }
    }
    return bytes;
}

} // namespace zonstory

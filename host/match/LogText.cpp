#include "match/LogText.h"

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

std::string FromWindows1252(std::string_view bytes) {
    zoncore::UString units;
    units.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        const char16_t windows = value >= 0x80 && value < 0xA0 ? kWindows[value - 0x80] : u'\0';
        units += windows != 0 ? windows : static_cast<char16_t>(value);
    }
    return zoncore::UTF16to8(units);
}

// A log begins with words in ASCII, so without a mark every other byte of its UTF-16 is zero.
std::optional<Order> FindOrder(std::string_view bytes) {
    const std::string_view start = bytes.substr(0, 64);
    std::size_t zeros[2] = {0, 0};
    for (std::size_t at = 0; at < start.size(); ++at) {
        zeros[at % 2] += start[at] == '\0' ? 1 : 0;
    }
    const std::size_t most = start.size() / 4;
    if (zeros[1] > most && zeros[0] == 0) {
        return Order::Little;
    }
    return zeros[0] > most && zeros[1] == 0 ? std::optional(Order::Big) : std::nullopt;
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

std::string LogToUTF8(std::string_view bytes) {
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

} // namespace zonstory

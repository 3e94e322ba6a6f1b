#include "source/TextDecoder.h"

#include <algorithm>
#include <array>

#include <boost/nowide/utf/convert.hpp>
#include <boost/nowide/utf/utf.hpp>

namespace zonscreenplay {

namespace {

namespace utf = boost::nowide::utf;

// What the bytes from 0x80 to 0x9F mean. The five that mean nothing stand for the control characters of their number, as
// browsers read them.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void Append(utf::code_point codePoint, std::string& text) {
    char bytes[4] = {};
    const char* const end = utf::utf_traits<char>::encode(codePoint, bytes);
    text.append(bytes, static_cast<std::size_t>(end - bytes));
}

std::string FromUTF16(std::string_view bytes, bool isBigEndian) {
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t index = 0; index < units.size(); ++index) {
        const auto first = static_cast<unsigned char>(bytes[2 * index]);
        const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
        units[index] = static_cast<char16_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    }
    return utf::convert_string<char>(units.data(), units.data() + units.size());
}

std::string FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        Append(code >= 0x80 && code < 0xA0 ? kWindows1252[code - 0x80] : code, text);
    }
    return text;
}

// Where the first byte stands that is no UTF-8; the end when there is none.
std::size_t FirstForeignByte(std::string_view bytes) {
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end) {
        const char* const start = position;
        const utf::code_point codePoint = utf::utf_traits<char>::decode(position, end);
        if (codePoint == utf::illegal || codePoint == utf::incomplete) {
            return static_cast<std::size_t>(start - bytes.data());
        }
    }
    return bytes.size();
}

std::size_t LineOf(std::string_view before) {
    std::size_t line = 1;
    for (std::size_t index = 0; index < before.size(); ++index) {
        const bool isHalf = before[index] == '\r' && index + 1 < before.size() && before[index + 1] == '\n';
        line += (before[index] == '\n' || before[index] == '\r') && !isHalf ? 1 : 0;
    }
    return line;
}

} // namespace

std::string DecodeText(std::string_view bytes, ScriptBuilder& builder) {
    using namespace std::string_view_literals;
    if (bytes.substr(0, 2) == "\xFF\xFE"sv || bytes.substr(0, 2) == "\xFE\xFF"sv) {
        if (bytes.size() % 2 != 0) {
            builder.Warn(WarningKind::Encoding, 1, "the file is UTF-16 and ends within a character");
        }
        return FromUTF16(bytes.substr(2), bytes[0] == '\xFE');
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF"sv) {
        bytes.remove_prefix(3);
    }
    const std::size_t foreign = FirstForeignByte(bytes);
    if (foreign == bytes.size()) {
        return std::string(bytes);
    }
    builder.Warn(WarningKind::Encoding, LineOf(bytes.substr(0, foreign)),
                 "here the file is no UTF-8; all of it is read as Windows-1252");
    return FromWindows1252(bytes);
}

} // namespace zonscreenplay

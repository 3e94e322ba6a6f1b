#include "source/Utf8.h"

#include <boost/nowide/utf/utf.hpp>

namespace zonscreenplay {

namespace {

namespace utf = boost::nowide::utf;

bool IsASCII(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

void AppendCodePoint(utf::code_point codePoint, zoncore::UString& text) {
    char16_t units[2] = {};
    const char16_t* const end = utf::utf_traits<char16_t>::encode(codePoint, units);
    text.append(units, static_cast<std::size_t>(end - units));
}

} // namespace

void AppendUTF8(std::string_view utf8, zoncore::UString& text) {
    const char* position = utf8.data();
    const char* const end = position + utf8.size();
    while (position != end) {
        const char* const start = position;
        while (position != end && IsASCII(*position)) {
            ++position;
        }
        text.append(start, position); // most of a script, so without a look at what each byte could begin
        if (position != end) {
            const utf::code_point codePoint = utf::utf_traits<char>::decode(position, end);
            const bool isValid = codePoint != utf::illegal && codePoint != utf::incomplete;
            AppendCodePoint(isValid ? codePoint : 0xFFFD, text);
        }
    }
}

} // namespace zonscreenplay

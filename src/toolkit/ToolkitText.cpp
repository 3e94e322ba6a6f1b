#include "toolkit/ToolkitText.h"

#include <algorithm>

#include <boost/nowide/utf/utf.hpp>

#include <zoncore/ASCII.h>

#include "toolkit/ToolkitCall.h"

namespace zonstoryparser {

namespace {

constexpr const char* kOperation = "cannot store the value";

void CheckText(const std::string& utf8) {
    namespace utf = boost::nowide::utf;
    const char* position = utf8.data();
    const char* const last = position + utf8.size();
    while ((position = zoncore::EndOfASCII(position, last)) != last) {
        const utf::code_point codePoint = utf::utf_traits<char>::decode(position, last);
        if (codePoint == utf::illegal || codePoint == utf::incomplete) {
            ThrowToolkitError(kXMPErr_BadParam, kOperation, {});
        }
        if (codePoint == 0xFFFE || codePoint == 0xFFFF) {
            ThrowToolkitError(kXMPErr_BadUnicode, kOperation, {});
        }
    }
}

} // namespace

ToolkitText::ToolkitText(const std::string& utf8) : mText(&utf8) {
    CheckText(utf8);
    if (utf8.find('\0') != std::string::npos) {
        mWithoutZeros = utf8;
        std::replace(mWithoutZeros.begin(), mWithoutZeros.end(), '\0', ' ');
        mText = &mWithoutZeros;
    }
}

} // namespace zonstoryparser

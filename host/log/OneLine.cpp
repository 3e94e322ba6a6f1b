#include "log/OneLine.h"

#include <algorithm>

#include <zoncore/UString.h>

#include "text/AsciiText.h"

namespace zonstory {

namespace {

bool BreaksCells(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029 || unit >= 0xFFFE;
}

bool IsPlain(char byte) {
    return byte >= 0x20 && byte < 0x7F;
}

} // namespace

std::string OneLine(std::string_view utf8) {
    if (std::all_of(utf8.begin(), utf8.end(), IsPlain)) { // as most are
        return std::string(WithoutBlanks(utf8));
    }
    zoncore::UString units = zoncore::UTF8to16(std::string(utf8));
    std::replace_if(units.begin(), units.end(), BreaksCells, u' ');
    return std::string(WithoutBlanks(zoncore::UTF16to8(units)));
}

} // namespace zonstory

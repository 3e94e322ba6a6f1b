#pragma once

#include <string>
#include <string_view>

namespace zonstory {

/// A text as a cell can hold it, on one line: each tab, line end, other control character and code point that XML has no
/// place for is a blank, and no blanks stand around it.
std::string OneLine(std::string_view utf8);

} // namespace zonstory

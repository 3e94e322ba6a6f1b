#pragma once

#include <cstddef>
#include <string_view>

namespace zonstory {

/// How many cells of a terminal a line takes: two for a Chinese character or an emoji (however many code points it is
/// made of), none for a combining accent.
/// @param line  UTF-8 without control characters, such as SafeLine() returns.
std::size_t DisplayWidth(std::string_view line);

} // namespace zonstory

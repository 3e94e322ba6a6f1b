#pragma once

#include <cstddef>
#include <string>

namespace zonstory {

/// "label        value\n", the value as SafeLine() shows it; nothing where it is empty.
/// @param indent  Blanks in front.
std::string Labelled(const char* label, const std::string& value, std::size_t indent = 0);

} // namespace zonstory

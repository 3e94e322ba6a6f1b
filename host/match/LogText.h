#pragma once

#include <string>
#include <string_view>

namespace zonstory {

/// A log's bytes as UTF-8, whatever they were saved as: UTF-8 or UTF-16 of either order, with or without a byte order
/// mark, else Windows-1252, in which every byte means something. No mark is left in front.
std::string LogToUTF8(std::string_view bytes);

} // namespace zonstory

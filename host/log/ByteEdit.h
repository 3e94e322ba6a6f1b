#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zonstory {

/// Bytes that take the place of others in a file; where begin is end, nothing goes.
struct ByteEdit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string bytes;
};

/// The file with its edits; every byte outside of them is kept as it is.
/// @param edits  In the order of the file, none within another.
std::string ApplyEdits(std::string_view bytes, const std::vector<ByteEdit>& edits);

} // namespace zonstory

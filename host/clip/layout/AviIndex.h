#pragma once

#include <cstdint>
#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

/// Where the indexes of an AVI are; the older one is a chunk, those for files beyond 1 GB are one chunk for each stream,
/// which names more of them among the media.
struct AviIndexes {
    std::vector<ByteRange> older; ///< The content of "idx1".
    std::vector<ByteRange> newer; ///< The content of each "indx".
    std::uint64_t movi = 0;       ///< Where "movi", from which an older index may count, stands in the first part.
};

/// Every position that they name, as a place in the file, in their order; those too that lead out of it.
/// @throws NoExactWay when the indexes cannot be true, FileError when the disk fails.
std::vector<std::uint64_t> ReadAviPositions(const ByteReader& file, const AviIndexes& indexes);

} // namespace zonstory

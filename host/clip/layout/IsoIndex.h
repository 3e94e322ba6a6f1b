#pragma once

#include <string>
#include <vector>

#include "clip/layout/IsoBox.h"
#include "clip/layout/PositionTable.h"

namespace zonstory {

/// What a file says about places in it: chunk offsets, fragments and their random access, segments, items.
struct IsoIndex {
    std::vector<PositionTable> tables; ///< In file order; none that leads into another file.
    std::string doubt; ///< Why there may be positions besides these, behind "since "; empty when there are none.
    bool isCompressed = false;
};

/// Reads no table, only where each is. Media and free space are taken to hold no positions.
/// @throws DamagedFile when a table of chunks ends beyond its box.
IsoIndex ReadIsoIndex(const ByteReader& file, const BoxList& boxes);

} // namespace zonstory

#pragma once

#include "clip/layout/IsoBox.h"
#include "clip/layout/IsoIndex.h"

namespace zonstory {

/// Changes of boxes, gathered in any order, to become a list in which every position of the index follows.
class BoxEdits {
public:
    /// Puts bytes in the place of others, or between them.
    void Replace(ByteRange taken, std::string put);
    void Insert(std::uint64_t offset, std::string put) { Replace({offset, 0}, std::move(put)); }

    /// Gives a box another size field. One that goes on to the end of the file keeps its 0.
    /// @throws NoExactWay when the field is too narrow.
    void Resize(const Box& box, std::uint64_t size);

    /// Makes free space of a box, and all that it held zero.
    void Clear(const Box& box);

    /// The list; this is empty then.
    /// @throws NoExactWay when a position leads into what changes, or has no room for its new number.
    EditList Take(const ByteReader& file, const IsoIndex& index);

private:
    EditList mEdits;
};

} // namespace zonstory

#pragma once

#include <cstdint>
#include <functional>

#include "clip/layout/Chunks.h"
#include "clip/layout/Edit.h"

namespace zonstory {

/// The chunk that encloses others: all of a WAV or AIFF, one part of an AVI.
struct ChunkForm {
    ChunkOrder order = ChunkOrder::Little;
    std::uint32_t type = 0;      ///< WAVE, AVIX, AIFF.
    ByteRange sizeField;         ///< Where its size stands, of 4 bytes or, in "ds64", 8.
    std::uint64_t size = 0;      ///< As it stands there.
    std::uint64_t begin = 0;     ///< Of its first chunk.
    std::uint64_t end = 0;       ///< As its size says, but within the file.
    std::uint64_t chunksEnd = 0; ///< Where its last chunk ends with its pad byte; beyond `end` when that has none.
    LongSizes longSizes;
};

/// A chunk, and where the content of the one before it ends; for the first, where that begins.
using ChunkVisitor = std::function<void(const Chunk& chunk, std::uint64_t before)>;

/// Reads a form, and calls `visit` for each of its chunks, all of which are whole.
/// @param offset  Where its header begins, which is within the file.
/// @throws DamagedFile  when the file is cut off.
/// @throws NoExactWay   when the sizes contradict each other or were never filled in, or other readers would go astray
///                      among its chunks.
ChunkForm ReadForm(const ByteReader& file, ChunkOrder order, std::uint64_t offset, const ChunkVisitor& visit);

/// Refuses a file in which so much lies behind its last form that it may be sound and picture: a size that wrapped, or one
/// that a recorder had no time to fill in. @throws NoExactWay
void RequireLittleBehind(const ByteReader& file, const ChunkForm& last);

/// What makes a form say that it is longer by `growth`. @throws NoExactWay when its size field has no room for that.
Edit ResizeForm(const ChunkForm& form, std::int64_t growth);

} // namespace zonstory

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

/// A box of an ISO base media or QuickTime file, where it stands in the file.
struct Box {
    std::uint32_t type = 0;
    std::uint64_t offset = 0; ///< Of its header.
    std::uint64_t header = 0; ///< 8, or 16 where the size has 64 bits.
    std::uint64_t size = 0;   ///< All of it, header included.
    bool isOpen = false;      ///< Its size field is 0: it goes on to the end of the file.

    std::uint64_t End() const { return offset + size; }
    ByteRange Content() const { return {offset + header, size - header}; }
};

/// Boxes side by side.
struct BoxList {
    std::vector<Box> boxes;
    std::uint64_t end = 0; ///< What lies from here on belongs to no box.
    bool isCut = false;    ///< It looks like one that does not end where it should.

    /// The first of a type, or nullptr.
    const Box* Find(std::uint32_t type) const;
    /// The one that begins at an offset, or nullptr.
    const Box* At(std::uint64_t offset) const;
};

/// The boxes of the file itself. What is no box ends them: a recorder's trailer, zeros, a rest. A trailer that happens to
/// begin like a box of a name that nobody knows is one as a whole.
/// @throws DamagedFile when a box that such files are made of ends beyond the file.
BoxList ReadFileBoxes(const ByteReader& file);

/// The boxes within another. A size of 0, with which QuickTime ends user data, ends them.
/// @param content  Of the outer box, without what stands in it before its boxes.
BoxList ReadInnerBoxes(const ByteReader& file, ByteRange content);

/// The box's name as messages show it, "moov"; what cannot be printed as a question mark.
std::string NameOf(std::uint32_t type);

/// A header of 8 bytes, or of 16 where asked for, for a box of a size that counts the header.
/// @throws NoExactWay when the size needs more bits than the header has.
std::string BoxHeader(std::uint32_t type, std::uint64_t size, std::uint64_t header = 8);

} // namespace zonstory

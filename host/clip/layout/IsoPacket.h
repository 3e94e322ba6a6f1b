#pragma once

#include <optional>
#include <string>
#include <vector>

#include "clip/layout/IsoBox.h"

namespace zonstory {

/// The identifier of the `uuid` box that holds XMP; 16 bytes.
extern const std::string kXMPIdentifier;

/// Whether a box is the `uuid` box that holds XMP.
bool IsXMPBox(const ByteReader& file, const Box& box);

/// A box that holds a packet and nothing else.
struct PacketBox {
    Box box;
    std::vector<Box> around; ///< The boxes that it lies in, from within; none for a `uuid` box.
    std::optional<Box> next; ///< What follows it within the innermost of them, or in the file.
    bool isOnlyOne = false;  ///< Nothing lies beside it in the innermost of them.
    ByteRange room;          ///< Of the packet in it.
};

/// Where a file's packets are, and where one belongs.
struct PacketPlaces {
    std::optional<PacketBox> own;  ///< The one that readers of this kind of file take.
    std::vector<PacketBox> others; ///< All the rest, in file order.
};

/// Whether the packet belongs in the index, since the file is a QuickTime movie, else at its top level. QuickTime is what
/// names "qt  " among the kinds of file that it can be read as, and what is so old that it names none.
bool IsQuickTime(const ByteReader& file, const BoxList& boxes);

PacketPlaces FindPackets(const ByteReader& file, const BoxList& boxes, bool isQuickTime);

} // namespace zonstory

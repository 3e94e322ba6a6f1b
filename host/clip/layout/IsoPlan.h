#pragma once

#include <string_view>

#include "clip/layout/ContainerLayout.h"
#include "clip/layout/IsoIndex.h"
#include "clip/layout/IsoPacket.h"

namespace zonstory {

/// What is known of a file before it is changed.
struct IsoFile {
    const ByteReader& file;
    BoxList boxes;
    bool isQuickTime = false;
    PacketPlaces packets;
    IsoIndex index;
};

/// ContainerLayout::Write() and Remove(). Media does not move where it need not:
///
/// - The packet's own white space, then free space of zeros behind it, take what is new.
/// - At the top level a packet that cannot grow becomes free space, and its successor goes to the end: in front of the
///   random access of fragments, which is sought from the end of the file, and of bytes that belong to no box.
/// - An index behind the media grows; one in front of it takes from free space behind it. Without such, the media moves
///   once by a multiple of 4096 bytes, and free space is left between them.
/// - What is removed from an index in front of the media becomes free space behind the index.
///
/// What must be known to undo it stands in the file: see kWasOpen and kLongHeader.
EditPlan PlanIsoWrite(const IsoFile& iso, std::string_view packet);
EditPlan PlanIsoRemove(const IsoFile& iso);

} // namespace zonstory

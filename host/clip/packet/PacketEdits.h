#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clip/layout/Edit.h"
#include "clip/packet/MetadataContent.h"

namespace zonstory {

/// A packet that says nothing, as this program makes one: what stands in a packet of its own once all that it wrote there
/// is taken out again. For a sidecar without the processing instructions by which packets are found in other files.
std::string EmptyPacket(bool hasInstructions);

/// The edits of a packet after which some of its properties are what `wanted` says, or are gone. Every other property, and
/// whatever else stands in the packet, keeps its bytes; none is gained.
///
/// An element takes the place of the first one that goes; where there is none, it comes with its like in an
/// rdf:Description of their own at the end, which goes with the last of them.
/// @param packet   UTF-8, without zero bytes behind it.
/// @param changed  The properties.
/// @throws PacketError as ReadPacketMap().
EditList PacketEdits(std::string_view packet, const std::vector<PropertyName>& changed, const MetadataContent& wanted);

/// Bytes with edits that lie within them.
std::string Edited(std::string_view bytes, const EditList& edits);

/// A packet without the white space at its end that leaves room for growth, and without anything behind it.
std::string WithoutPadding(std::string_view packet);

} // namespace zonstory

#pragma once

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "clip/packet/MetadataContent.h"

/// Where the properties of an XMP packet stand in its bytes, so that some can be changed without parsing and writing the
/// others anew, which loses what a toolkit does not keep.
namespace zonstory {

/// Why a packet is not looked into: "is no well-formed XML in UTF-8".
class PacketError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Bytes of a packet, from `begin` to before `end`.
struct PacketRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// A property at the top of the packet.
struct PacketProperty {
    PropertyName name;
    PacketRange range; ///< The element or the attribute, with the white space before it.
    bool isElement = false;
};

/// An rdf:Description at the top.
struct PacketDescription {
    PacketRange range;   ///< With the white space before it.
    PacketRange content; ///< Between its tags; empty for a tag that is both.
    bool isPlain = true; ///< Its attributes say nothing, or at most what another one before it says it is about.
    std::vector<PacketProperty> properties;      ///< In the order of their bytes.
    std::map<std::string, std::string> prefixes; ///< The namespaces' URIs that stand for prefixes in it.
};

struct PacketMap {
    std::vector<PacketDescription> descriptions;
    std::size_t end = 0; ///< Where the end tag of rdf:RDF begins.
    std::string_view
        about; ///< What the packet is about, as it stands in an attribute with its quotes; empty for nothing.
    std::string_view rdf; ///< "rdf:", or whatever stands for it in the tag that ends the packet.
};

/// @param packet  Must outlive the map, which points into it. UTF-8, without zero bytes behind it.
/// @throws PacketError when it is not well-formed, declares a document type, or has not exactly one rdf:RDF with an end
///         tag of its own.
PacketMap ReadPacketMap(std::string_view packet);

} // namespace zonstory

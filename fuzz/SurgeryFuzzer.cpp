// Arbitrary bytes as a packet in which one property is set and taken out: every other property keeps its bytes, none is
// gained, and what was put can be taken out again without a trace.
#include <string>
#include <string_view>
#include <vector>

#include "Target.h"
#include "clip/packet/PacketEdits.h"
#include "clip/packet/PacketMap.h"

namespace {

using namespace zonstory;

const PropertyName kProperty("http://purl.org/dc/elements/1.1/", "source");

std::vector<std::string> OthersOf(std::string_view packet) {
    std::vector<std::string> others;
    for (const PacketDescription& description : ReadPacketMap(packet).descriptions) {
        for (const auto& [name, range, isElement] : description.properties) {
            if (name != kProperty) {
                others.push_back(name.first + name.second);
                others.emplace_back(packet.substr(range.begin, range.end - range.begin));
            }
        }
    }
    return others;
}

std::string With(std::string_view packet, const char* value) {
    SXMPMeta xmp;
    if (value != nullptr) {
        xmp.SetProperty(kProperty.first.c_str(), kProperty.second.c_str(), value);
    }
    std::string edited = Edited(packet, PacketEdits(packet, {kProperty}, MetadataContent(xmp)));
    REQUIRE(OthersOf(edited) == OthersOf(packet));
    return edited;
}

} // namespace

void fuzz::TryInput(std::string_view packet) {
    try {
        REQUIRE(With(With(packet, "<new>"), nullptr) == With(packet, nullptr));
    } catch (const PacketError&) { // no packet
    }
}

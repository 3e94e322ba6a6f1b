#include "story/PacketRule.h"

#include <zonstoryparser/SceneContent.h>

namespace zonstory {

std::optional<std::string> ReasonForNoPacket(const zonstoryparser::Scene& scene) {
    using zonstoryparser::NoPacketReason;
    switch (zonstoryparser::WhyNoPacket(scene)) {
    case NoPacketReason::NoParagraphs:
        return "it has no paragraphs";
    case NoPacketReason::NoIdentity:
        return "its first paragraph has no objID";
    case NoPacketReason::NothingSaid:
        return "it has no heading, no action and no speaker with dialogue";
    case NoPacketReason::None:
        break;
    }
    return std::nullopt;
}

} // namespace zonstory

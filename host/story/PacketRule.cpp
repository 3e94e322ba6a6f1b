#include "story/PacketRule.h"

#include "story/SceneContent.h"

namespace zonstory {

std::optional<std::string> WhyNoPacket(const zonstoryparser::Scene& scene) {
    if (scene.paragraphs.empty()) {
        return "it has no paragraphs";
    }
    if (scene.paragraphs.front()->objectID.AsString().empty()) {
        return "its first paragraph has no objID";
    }
    const SceneContent content = GatherSceneContent(scene);
    if (content.heading.empty() && content.action.empty() && content.dialogues.empty()) {
        return "it has no heading, no action and no speaker with dialogue";
    }
    return std::nullopt;
}

} // namespace zonstory

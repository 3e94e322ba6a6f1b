#include "story/BodyScenes.h"

namespace zonstory {

std::vector<boost::intrusive_ptr<zonstoryparser::Scene>> BodyScenes(const zonstoryparser::Talewright& story) {
    std::vector<boost::intrusive_ptr<zonstoryparser::Scene>> scenes;
    if (!story.document || !story.document->body || !story.document->body->section) {
        return scenes;
    }
    for (const auto& scene : story.document->body->section->scenes) {
        if (scene) {
            scenes.push_back(scene);
        }
    }
    return scenes;
}

} // namespace zonstory

#include "report/PageScene.h"

#include <algorithm>

#include <zonstoryparser/SceneContent.h>

#include "report/FactTable.h"
#include "story/BodyScenes.h"

namespace zonstory {

std::string PageScene::Label() const {
    return facts.number.empty() ? '#' + std::to_string(facts.position) : facts.number;
}

std::string PageScene::Link() const {
    return "#scene-" + std::to_string(facts.position);
}

std::vector<PageScene> PageScenes(const PageInput& input) {
    const auto models = BodyScenes(*input.story.root);
    std::vector<SceneFacts> facts = DescribeScenes(input.story);
    std::vector<PageScene> scenes;
    scenes.reserve(models.size());
    for (std::size_t at = 0; at < models.size(); ++at) {
        PageScene scene;
        scene.scene = models[at];
        scene.facts = std::move(facts[at]);
        scene.heading = zoncore::UTF16to8(zonstoryparser::GatherSceneContent(*models[at]).heading);
        scene.light = LightOf(scene.heading);
        scene.heading = scene.heading.empty() ? "(no heading)" : scene.heading;
        if (input.clips) {
            scene.clips = input.clips->ofScene[at];
        }
        scenes.push_back(std::move(scene));
    }
    return scenes;
}

LengthMeasure::LengthMeasure(const std::vector<PageScene>& scenes)
    : isInEighths(std::any_of(scenes.begin(), scenes.end(),
                              [](const PageScene& scene) { return scene.facts.properties.eighths > 0; })),
      title(isInEighths ? "Pages" : "Words") {}

std::size_t LengthMeasure::Of(const PageScene& scene) const {
    return isInEighths ? scene.facts.properties.eighths : scene.facts.dialogueWords + scene.facts.actionWords;
}

std::string LengthMeasure::Text(std::size_t length) const {
    return isInEighths ? EighthsText(length) : std::to_string(length);
}

} // namespace zonstory

#include "match/SceneField.h"

#include <algorithm>
#include <string>

#include "match/Slate.h"

namespace zonstory {

namespace {

bool NamesTheSceneOf(std::string_view field, std::string_view number) {
    return NamesScene(field, SceneNumbers({std::string(number)}), 0);
}

} // namespace

std::vector<std::size_t> ScenesNamed(std::string_view field, const SceneNumbers& story) {
    std::vector<std::size_t> scenes = story.FindWritten(field).scenes;
    for (const SlateReading& reading : ReadSceneField(field)) {
        const SceneNumbers::Found found = story.Find(reading.scene, reading.exactOnly);
        scenes.insert(scenes.end(), found.scenes.begin(), found.scenes.end());
    }
    std::sort(scenes.begin(), scenes.end());
    scenes.erase(std::unique(scenes.begin(), scenes.end()), scenes.end());
    return scenes;
}

bool NamesScene(std::string_view field, const SceneNumbers& story, std::size_t scene) {
    const std::vector<std::size_t> scenes = ScenesNamed(field, story);
    return std::binary_search(scenes.begin(), scenes.end(), scene);
}

bool CanNameOneScene(std::string_view left, std::string_view right) {
    return left == right || NamesTheSceneOf(left, right) || NamesTheSceneOf(right, left);
}

} // namespace zonstory

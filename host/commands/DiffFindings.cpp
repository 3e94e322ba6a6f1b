#include "commands/DiffFindings.h"

namespace zonstory {

using zonstoryparser::Rename;
using zonstoryparser::SceneComparison;
using zonstoryparser::SceneContent;

namespace {

std::string NumberAt(const DiffFindings::Scenes& scenes, DiffFindings::Position position) {
    return position ? zoncore::UTF16to8(scenes[*position - 1].scene->sceneNumber) : std::string();
}

} // namespace

DiffFindings::DiffFindings(const Story& oldStory, const Story& newStory)
    : before(oldStory), after(newStory), oldScenes(SceneSelection(*oldStory.root).All()),
      newScenes(SceneSelection(*newStory.root).All()),
      comparison(zonstoryparser::CompareStories(*oldStory.root, *newStory.root)) {}

std::string DiffFindings::OldNumber(const SceneComparison& scene) const {
    return NumberAt(oldScenes, scene.oldPosition);
}

std::string DiffFindings::NewNumber(const SceneComparison& scene) const {
    return NumberAt(newScenes, scene.newPosition);
}

SceneContent DiffFindings::Content(const Scenes& scenes, Position position) {
    return position ? zonstoryparser::GatherSceneContent(*scenes[*position - 1].scene) : SceneContent();
}

std::string DiffFindings::Revision(const SceneComparison& scene) const {
    const Story& story = scene.newPosition ? after : before;
    const std::size_t index = (scene.newPosition ? *scene.newPosition : *scene.oldPosition) - 1;
    return index < story.scenes.size() ? story.scenes[index].revision : std::string();
}

const char* SceneStateWord(const SceneComparison& scene) {
    return kSceneStateWords.at(static_cast<std::size_t>(scene.state));
}

const char* RenameWord(const Rename& rename) {
    return rename.kind == Rename::Kind::Character ? "character" : "place";
}

} // namespace zonstory

#include "story/SceneSelection.h"

#include <algorithm>

#include <fmt/format.h>

#include <zonstoryparser/SceneContent.h>

#include "story/BodyScenes.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr char kPositionMark = '#';

// What people mix up: case and leading zeros ("7" in a spreadsheet for "007").
std::string Folded(const std::string& name) {
    std::string folded = name.substr(std::min(name.find_first_not_of('0'), name.size()));
    std::transform(folded.begin(), folded.end(), folded.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return folded;
}

} // namespace

zoncore::UString NumberToWrite(const SelectedScene& selected) {
    return zonstoryparser::SceneNumberToWrite(*selected.scene, static_cast<std::int32_t>(selected.position));
}

// A number that reads like a position ("#7") stands under the same name as the position and may clash with it.
SceneSelection::SceneSelection(const zonstoryparser::Talewright& story) : mScenes(BodyScenes(story)) {
    for (std::size_t index = 0; index < mScenes.size(); ++index) {
        const std::string number(WithoutBlanks(zoncore::UTF16to8(mScenes[index]->sceneNumber)));
        const std::string position = kPositionMark + std::to_string(index + 1);
        mByName[position].push_back(index);
        if (!number.empty() && number != position) {
            mByName[number].push_back(index);
        }
    }
}

SelectedScene SceneSelection::Find(std::string_view name) const {
    const std::string wanted(WithoutBlanks(name));
    const auto found = mByName.find(wanted);
    if (found == mByName.end()) {
        FailToFind(wanted);
    }
    const std::vector<std::size_t>& indices = found->second;
    if (indices.size() == 1) {
        return At(indices.front());
    }
    std::string candidates;
    for (const std::size_t index : indices) {
        candidates += (candidates.empty() ? "" : ", ") + Describe(index);
    }
    throw SceneSelectionError(fmt::format("scene '{}' is ambiguous: {}", wanted, candidates));
}

std::vector<SelectedScene> SceneSelection::All() const {
    std::vector<SelectedScene> all;
    for (std::size_t index = 0; index < mScenes.size(); ++index) {
        all.push_back(At(index));
    }
    return all;
}

void SceneSelection::FailToFind(const std::string& name) const {
    if (name.empty()) {
        throw SceneSelectionError("no scene is named");
    }
    for (const auto& scene : mScenes) {
        const std::string number(WithoutBlanks(zoncore::UTF16to8(scene->sceneNumber)));
        if (!number.empty() && Folded(number) == Folded(name)) {
            throw SceneSelectionError(fmt::format("no scene '{}'; the story writes it '{}'", name, number));
        }
    }
    throw SceneSelectionError(fmt::format("no scene '{}' among the story's {} scenes", name, mScenes.size()));
}

std::string SceneSelection::Describe(std::size_t index) const {
    const std::string heading = zoncore::UTF16to8(zonstoryparser::GatherSceneContent(*mScenes[index]).heading);
    return kPositionMark + std::to_string(index + 1) + (heading.empty() ? "" : " (" + heading + ")");
}

} // namespace zonstory

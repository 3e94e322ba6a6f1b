#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "match/SceneNumbers.h"

/// What a field for scene numbers says, held against scenes.
namespace zonstory {

/// The scenes that it names, as the story does or as a slate does: "3", "003", "Sc 3", "3B", "3B-2" for scene 3. A number
/// that the story has just so is no set-up of another scene.
/// @return In the order of the story.
std::vector<std::size_t> ScenesNamed(std::string_view field, const SceneNumbers& story);

/// Whether this scene is among them.
bool NamesScene(std::string_view field, const SceneNumbers& story, std::size_t scene);

/// Whether one of two fields names the scene of the other: "3B" and "3", but not "3B" and "3A".
bool CanNameOneScene(std::string_view left, std::string_view right);

} // namespace zonstory

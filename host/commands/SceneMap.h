#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "output/Output.h"
#include "story/SceneSelection.h"

namespace zonstory {

/// What a row of a map wants done.
enum class MapAction {
    Write, ///< The row names a scene.
    Clear, ///< It says "clear" instead.
    Skip,  ///< It says "skip": the clip is left alone, and is told as such.
};

/// One row of a map: a clip, or a folder that stands for its clips, and the scene it shows.
struct MappedClip {
    std::size_t line = 0;
    std::string clip;    ///< A path that can be opened from the current folder; any bytes.
    SelectedScene scene; ///< To be written; none for other actions.
    MapAction action = MapAction::Write;

    bool WantsTheSame(const MappedClip& other) const {
        return action == other.action && scene.position == other.scene.position;
    }
};

struct SceneMap {
    std::vector<MappedClip> clips;
    std::size_t rowsWithoutScene = 0; ///< Rows of clips that show no scene, which are passed over.
};

/// Reads a CSV file with the columns "clip" and "scene", in any order among others, their names in any case. A relative
/// clip is looked for in the folder of the map first, then in the current one. In place of a scene, "skip" and "clear" in
/// any case say what else is done; a scene of such a number is named by its position.
/// @param path  A file's name, or "-" for standard input.
/// @throws CsvError when the file cannot be read or lacks a column, or a row names a scene but no clip.
/// @throws SceneSelectionError when a scene is not found or ambiguous; what() has a line "file:line: reason" for every
///         such row.
SceneMap ReadSceneMap(const std::string& path, const SceneSelection& scenes);

} // namespace zonstory

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "match/SceneNumbers.h"

namespace zonstory {

/// What one clip says it shows.
struct CoverageRecord {
    std::string clip;  ///< Its name, given back as it is.
    std::string scene; ///< The number that the clip carries; empty where it carries none.
    std::string take;
    std::optional<std::string> state = {}; ///< Which draft's text it carries, in a word, where that is known.
    std::string setUp = {};                ///< "A", where the number or the clip's name tells it.
    std::string camera = {};               ///< What the clip's metadata calls the camera.
};

/// Which scenes of a story the clips show. Numbers name records by their place in the input.
struct SceneCoverage {
    struct Scene {
        std::vector<std::size_t> clips; ///< Ordered by take, then as given.
    };

    std::vector<Scene> scenes;             ///< One for each scene of the story.
    std::vector<std::size_t> uncovered;    ///< Scenes that no clip shows.
    std::vector<std::size_t> ambiguous;    ///< Clips whose number several scenes bear; they count for none.
    std::vector<std::size_t> unknown;      ///< Clips whose number the story does not have.
    std::vector<std::size_t> withoutScene; ///< Clips that carry no number.
};

/// A clip's number counts exactly as the story has it, or without set-up letters, as in a log.
///
/// A number that the program itself has written for a scene without one ("007", its place) finds that scene.
SceneCoverage FindSceneCoverage(const std::vector<CoverageRecord>& records, const SceneNumbers& story);

} // namespace zonstory

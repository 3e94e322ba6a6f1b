#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <zonstoryparser/SceneContent.h>
#include <zonstoryparser/StoryComparison.h>

#include "commands/DraftFinder.h"
#include "story/SceneSelection.h"
#include "story/StoryReader.h"

namespace zonstory {

struct ComparedClip {
    std::string clip; ///< As the user named it; any bytes.
    DraftAnswer answer;
};

/// All that is printed of two drafts compared. It looks at both.
struct DiffFindings {
    using Scenes = std::vector<SelectedScene>;
    using Position = std::optional<std::size_t>; ///< From 1.

    const Story& before;
    const Story& after;
    const Scenes oldScenes;
    const Scenes newScenes;
    const zonstoryparser::StoryComparison comparison;
    std::vector<ComparedClip> clips;

    DiffFindings(const Story& oldStory, const Story& newStory);

    /// As written, UTF-8; empty for a scene that the draft has not, or has without a number.
    std::string OldNumber(const zonstoryparser::SceneComparison& scene) const;
    std::string NewNumber(const zonstoryparser::SceneComparison& scene) const;
    /// What a scene of a draft says; nothing where the draft has it not.
    static zonstoryparser::SceneContent Content(const Scenes& scenes, Position position);
    /// The draft's own label of the scene's revision; of the old draft for a scene that is gone.
    std::string Revision(const zonstoryparser::SceneComparison& scene) const;
};

/// What each state is called, in the order of zonstoryparser::SceneState.
inline constexpr std::array kSceneStateWords = {"same",    "changed", "added",     "removed",
                                                "omitted", "moved",   "renumbered"};
const char* SceneStateWord(const zonstoryparser::SceneComparison& scene);
const char* RenameWord(const zonstoryparser::Rename& rename);

} // namespace zonstory

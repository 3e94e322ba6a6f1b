#pragma once

#include <string>
#include <vector>

#include "clip/Clip.h"
#include "match/SceneCoverage.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

/// Which clips are asked what they show of a story.
struct ClipsOfStory {
    StoryFile story;
    std::vector<std::string> clips; ///< Files and folders.
    bool recursive = false;
    ClipOptions clip;
    std::string oldStory; ///< An earlier draft, read as the story is; may be empty.
};

/// Every file and folder that is named there.
std::vector<std::string> InputsOf(const ClipsOfStory& clips);

struct CoveredClips {
    SceneNumbers story;
    std::vector<CoverageRecord> records;
    SceneCoverage coverage;
    bool allRead = true;
};

/// Reads what clips carry of a story that is read already. What cannot be read is said, and left out.
/// @throws zonscreenplay::ReadError of the old draft.
CoveredClips ReadCoveredClips(const Story& story, const ClipsOfStory& clips, Output& output);

} // namespace zonstory

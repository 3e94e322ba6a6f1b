#pragma once

#include <string>
#include <vector>

#include "clip/Clip.h"
#include "output/Format.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct DiffOptions {
    StoryFile oldStory;
    StoryFile newStory;
    std::vector<std::string> clips;
    bool recursive = false;
    Format format = Format::Text;
    bool words = false;        ///< Show the words that came and went.
    bool stat = false;         ///< Counts alone.
    bool onlyOutdated = false; ///< The names of outdated clips alone, a line each.
    bool exitCode = false;     ///< End with kDiffers when anything differs.
    ClipOptions clip;
};

/// Compares two drafts, and clips with either; changes nothing.
/// @return An ExitCode.
/// @throws zonscreenplay::ReadError
int RunDiff(const DiffOptions& options, Output& output);

} // namespace zonstory

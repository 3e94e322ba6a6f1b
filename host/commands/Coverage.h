#pragma once

#include <string>
#include <vector>

#include "clip/Clip.h"
#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct CoverageOptions {
    StoryFile story;
    std::vector<std::string> clips; ///< Files and folders.
    bool recursive = false;
    ClipOptions clip;
    std::string oldStory; ///< An earlier draft, read as the story is; may be empty.
    Format format = Format::Text;
};

/// Prints the story's scenes with the clips and takes that carry them, the scenes that no clip shows, and the clips whose
/// scene the story does not have.
/// @return An ExitCode; kUnmatched when a clip carries a scene that the story does not have, or has twice.
/// @throws zonscreenplay::ReadError
int RunCoverage(const CoverageOptions& options, Output& output);

/// The JSON Schema of its document.
Json CoverageSchema();

} // namespace zonstory

#pragma once

#include "commands/CoveredClips.h"
#include "commands/Results.h"
#include "output/Json.h"
#include "output/Output.h"

namespace zonstory {

struct CoverageOptions {
    ClipsOfStory clips;
    ResultTarget target;
};

/// Prints the story's scenes with the clips and takes that carry them, the scenes that no clip shows, and the clips whose
/// scene the story does not have.
/// @return An ExitCode; kUnmatched when a clip carries a scene that the story does not have, or has twice.
/// @throws zonscreenplay::ReadError
int RunCoverage(const CoverageOptions& options, Output& output);

/// The JSON Schema of its document.
Json CoverageSchema();

} // namespace zonstory

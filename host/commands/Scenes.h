#pragma once

#include <string>

#include "commands/Results.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct ScenesOptions {
    StoryFile story;
    ResultTarget target;
};

/// One row for every scene of the body.
/// @return An ExitCode.
/// @throws zonscreenplay::ReadError
int RunScenes(const ScenesOptions& options, Output& output);

/// The JSON Schema of its document.
Json ScenesSchema();

} // namespace zonstory

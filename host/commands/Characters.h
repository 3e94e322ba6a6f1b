#pragma once

#include <string>

#include "commands/Results.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct CharactersOptions {
    StoryFile story;
    ResultTarget target;
    bool byScene = false; ///< A table of scenes and speakers instead.
};

/// One row for every speaker of the body, in order of first speech.
/// @return An ExitCode.
/// @throws zonscreenplay::ReadError
int RunCharacters(const CharactersOptions& options, Output& output);

/// The JSON Schema of its document.
Json CharactersSchema();

} // namespace zonstory

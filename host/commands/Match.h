#pragma once

#include <string>
#include <vector>

#include "clip/Clip.h"
#include "commands/SceneMatching.h"
#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct MatchOptions {
    StoryFile story;
    std::vector<std::string> clips; ///< Files and folders.
    bool recursive = false;
    MatchSettings match;
    ClipOptions clip;
    Format format = Format::Text;
};

/// Prints which scene each clip shows, on what evidence and how surely. As CSV, what `write --map` reads: clips without
/// an answer have an empty scene, for a person to fill in.
/// @return An ExitCode; kUnmatched when a clip has no answer.
/// @throws zonscreenplay::ReadError, CsvError
int RunMatch(const MatchOptions& options, Output& output);

/// The JSON Schema of its document.
Json MatchSchema();

} // namespace zonstory

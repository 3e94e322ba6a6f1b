#pragma once

#include <string>
#include <vector>

#include "commands/ClipBatch.h"
#include "commands/SceneMatching.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct WriteOptions {
    StoryFile story;
    std::string scene;              ///< For all clips; empty when there is a map.
    std::string map;                ///< A CSV file that names a scene for every clip; empty when there is a scene.
    bool isMatching = false;        ///< Find each clip's scene instead.
    MatchSettings match;            ///< How.
    bool replaces = false;          ///< With isMatching: also where a clip says another scene.
    bool onlyEmpty = false;         ///< Only where a clip says nothing of a scene.
    std::vector<std::string> clips; ///< Files and folders.
    bool recursive = false;
    BatchOptions batch;
};

/// Writes scenes into clips.
/// @return An ExitCode; kUnmatched when all went well but for clips whose scene was not found.
/// @throws zonscreenplay::ReadError, CsvError, SceneSelectionError, UsageError, OutputError; no clip has been touched, save for the last.
int RunWrite(const WriteOptions& options, Output& output);

} // namespace zonstory

#pragma once

#include <string>
#include <vector>

#include "commands/LogFields.h"
#include "commands/SceneMatching.h"
#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct LogOptions {
    std::vector<std::string> files; ///< The logs that are to be filled.
    StoryFile story;
    std::string target; ///< A file, or a folder for files of the same names; empty for the files themselves.
    bool inPlace = false;
    bool dryRun = false;
    bool replace = false; ///< Other values, too.
    std::vector<LogFill> fills;
    MatchSettings match;
    std::vector<std::string> clips; ///< That the logs are about, asked what they carry; may be empty.
    bool recursive = false;
    ClipOptions clip;
    Format format = Format::Text;
};

/// Fills in logs what the script says of the scenes that their rows are about. All logs are read before one is written.
/// @return An ExitCode: kSomeFailed when a log was not written, a value had no place in its encoding, or a clip could not
///         be asked; kUnmatched when rows stayed without a scene.
/// @throws zonscreenplay::ReadError, CsvError, UsageError; nothing is then written.
int RunLog(const LogOptions& options, Output& output);

/// The JSON Schema of its document.
Json LogSchema();

} // namespace zonstory

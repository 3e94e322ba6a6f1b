#pragma once

#include <functional>
#include <string>
#include <vector>

#include "commands/ClipBatch.h"
#include "commands/Results.h"
#include "output/Format.h"
#include "story/StoryReader.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Options that several verbs share, each declared once.
namespace zonstory {

/// The file, and --max-size.
/// @param name  Of an argument, or of an option.
void AddStory(CLI::App& command, StoryFile& story, const std::string& name = "STORY");
/// An option of some grammar.
/// @param read  Throws std::invalid_argument for what it cannot read.
CLI::Option* AddText(CLI::App& command, const char* name, const char* type, const char* description,
                     const std::function<void(const std::string&)>& read);
void AddFormat(CLI::App& command, Format& format);
/// --format and -o.
void AddResultTarget(CLI::App& command, ResultTarget& target);
/// Clips as positional arguments, and --recursive.
/// @return The positional option, not required.
CLI::Option* AddClips(CLI::App& command, std::vector<std::string>& clips, bool& recursive);
/// --place, --sidecar and --sidecar-name.
void AddSidecar(CLI::App& command, ClipOptions& options);
/// How many clips are changed: what holds for every change, whatever it is.
void AddBatchWork(CLI::App& command, BatchOptions& options);
/// That, and everything about changing their metadata: sidecars and the journal.
void AddBatch(CLI::App& command, BatchOptions& options);

} // namespace zonstory

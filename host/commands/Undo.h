#pragma once

#include <string>

#include "commands/ClipBatch.h"
#include "output/Output.h"

namespace zonstory {

struct UndoOptions {
    std::string journal;    ///< A file or folder; empty for the user's own.
    std::string run;        ///< The beginning of a run's id; empty for the last that is not undone.
    bool isOutside = false; ///< Also what lies elsewhere than beneath a journal that others may have written.
    BatchOptions batch;
};

/// Gives the clips of a run their earlier bytes back, and records that in the same journal.
/// @return An ExitCode; kSomeFailed where a clip was changed since, or is not there any more.
/// @throws JournalError, UsageError, OutputError; no clip has been touched, save for the last.
int RunUndo(const UndoOptions& options, Output& output);

} // namespace zonstory

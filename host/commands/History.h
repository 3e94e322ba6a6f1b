#pragma once

#include <string>

#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"

namespace zonstory {

struct HistoryOptions {
    std::string journal; ///< A file or folder; empty for the user's own.
    std::string clip;    ///< Whose changes to tell; empty for all runs.
    Format format = Format::Text;
};

/// Prints what runs did: one row a run, or one clip's changes with old and new values. Changes nothing.
/// @return An ExitCode.
/// @throws JournalError
int RunHistory(const HistoryOptions& options, Output& output);

/// The JSON Schemas of the two.
Json HistorySchema();
Json ClipHistorySchema();

} // namespace zonstory

#pragma once

#include <string>

#include "commands/CoveredClips.h"

namespace zonstory {

struct ReportOptions {
    ClipsOfStory clips;
    std::string target;       ///< The page; "-" for standard output.
    std::string templateFile; ///< Instead of the program's own; may be empty.
    std::string language;     ///< Of the screenplay, as BCP 47 has it; may be empty.
};

/// Writes one page of HTML: the script with a line for each clip that shows a scene, what is missing, and who speaks.
/// @return An ExitCode, as RunCoverage().
/// @throws zonscreenplay::ReadError, UsageError, OutputError, std::length_error where the story is too large for a page
int RunReport(const ReportOptions& options, Output& output);

} // namespace zonstory

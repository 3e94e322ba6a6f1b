#pragma once

#include "cli/Verb.h"
#include "commands/SceneMatching.h"

namespace zonstory {

/// @name The verbs that find out which clip shows which scene
/// @{
Action AddMatch(CLI::App& command);
Action AddCoverage(CLI::App& command);
Action AddReport(CLI::App& command);
/// @}

/// --log, --slates and --min-confidence.
void AddMatchSettings(CLI::App& command, MatchSettings& settings);

} // namespace zonstory

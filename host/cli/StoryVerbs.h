#pragma once

#include "cli/Verb.h"

namespace zonstory {

/// @name The verbs that read a story and touch no clip
/// @{
Action AddInfo(CLI::App& command);
Action AddScenes(CLI::App& command);
Action AddCharacters(CLI::App& command);
Action AddCheck(CLI::App& command);
Action AddPackets(CLI::App& command);
Action AddDump(CLI::App& command);
Action AddConvert(CLI::App& command);
Action AddDiff(CLI::App& command);
/// @}

} // namespace zonstory

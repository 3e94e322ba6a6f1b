#pragma once

#include "cli/Verb.h"

namespace zonstory {

/// @name The verbs that work on clips
/// @{
Action AddWrite(CLI::App& command);
Action AddClear(CLI::App& command);
Action AddShow(CLI::App& command);
Action AddUndo(CLI::App& command);
Action AddHistory(CLI::App& command);
Action AddRecover(CLI::App& command);
/// @}

} // namespace zonstory

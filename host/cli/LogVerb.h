#pragma once

#include "cli/Verb.h"

namespace zonstory {

/// The verb that fills logs.
Action AddLog(CLI::App& command);

} // namespace zonstory

#pragma once

#include <string>
#include <vector>

#include "output/Output.h"

namespace zonstory {

struct RecoverOptions {
    std::vector<std::string> folders;
    bool dryRun = false; ///< Tell, and remove nothing.
};

/// Finds, in folders and all beneath them, what runs left that were killed or met a power cut, and removes it. Clips are
/// not touched: each is whole under its own name, and what is removed are new versions that never took it.
/// @return An ExitCode.
int RunRecover(const RecoverOptions& options, Output& output);

} // namespace zonstory

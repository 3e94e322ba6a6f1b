#pragma once

#include <string>
#include <vector>

#include "commands/ClipBatch.h"
#include "output/Output.h"

namespace zonstory {

struct ClearOptions {
    std::vector<std::string> clips; ///< Files and folders.
    bool recursive = false;
    BatchOptions batch;
};

/// Removes from clips what `write` writes.
/// @return An ExitCode.
/// @throws OutputError
int RunClear(const ClearOptions& options, Output& output);

} // namespace zonstory

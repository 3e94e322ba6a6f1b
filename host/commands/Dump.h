#pragma once

#include <string>

#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct DumpOptions {
    StoryFile story;
};

/// Runs the library's traversal, prints its report and the files it wrote into the temporary directory.
/// @return An ExitCode; kSomeFailed when a file that was due is not there.
/// @throws zonscreenplay::ReadError
int RunDump(const DumpOptions& options, Output& output);

} // namespace zonstory

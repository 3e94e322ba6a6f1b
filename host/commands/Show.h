#pragma once

#include <string>
#include <vector>

#include "clip/Clip.h"
#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"

namespace zonstory {

struct ShowOptions {
    std::vector<std::string> clips; ///< Files and folders.
    bool recursive = false;
    ClipOptions clip;
    Format format = Format::Text;
};

/// Prints what each clip carries.
/// @return An ExitCode; kSomeFailed when a clip could not be read.
int RunShow(const ShowOptions& options, Output& output);

/// The JSON Schema of its document.
Json ShowSchema();

} // namespace zonstory

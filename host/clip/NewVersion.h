#pragma once

#include <string>
#include <vector>

#include "clip/ClipState.h"
#include "clip/Replacement.h"

namespace zonstory {

/// Prepares the version of a clip or sidecar that carries the state's metadata, and proves that it does: the metadata
/// read back is what was to be written, and the media is the same.
/// @return What the user should know.
/// @throws ClipError when anything is not as it should be; ClipInterrupted. The clip itself is not touched.
std::vector<std::string> PrepareNewVersion(const ClipState& state, const ClipOptions& options,
                                           Replacement& replacement);

} // namespace zonstory

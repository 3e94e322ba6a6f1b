#pragma once

#include <string>
#include <vector>

#include "clip/ClipState.h"
#include "clip/Replacement.h"

namespace zonstory {

/// Prepares the version of a clip or sidecar that the state's edits make, and proves that it is no other: all bytes outside
/// the edits are the old ones, every position that the index names leads to the same bytes, and the metadata read back is
/// what was to be written.
/// @return What was done, with the checksums that are asked for.
/// @throws FileError when anything is not as it should be; ClipInterrupted. The clip itself is not touched.
RecordedEdits PrepareNewVersion(const ClipState& state, const ClipOptions& options, Replacement& replacement);

} // namespace zonstory

#pragma once

#include "match/NameRuns.h"

namespace zonstory {

/// Marks the runs of a name that cannot be a scene or a take, whatever stands around them: dates and timecodes, the names
/// that cameras, recorders and telephones give, frame sizes and rates, codecs.
void MarkNoise(NameRuns& name);

} // namespace zonstory

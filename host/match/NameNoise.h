#pragma once

#include "match/NameRuns.h"

namespace zonstory {

/// Marks the runs of a name that cannot be a scene or a take, whatever stands around them: dates and timecodes, reel and
/// file names that cameras give, frame sizes and rates, codecs, and what their words count ("Day 3", "Roll 12", "24 fps").
///
/// What only looks like one of these but may be a slate as well ("4K", "720") is left to the reader of slates, who sees
/// whether a scene word or a take stands beside it.
void MarkNoise(NameRuns& name);

} // namespace zonstory

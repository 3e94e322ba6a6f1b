#pragma once

#include "match/NameRuns.h"

/// The steps of MarkNoise(), in their order: a later one leaves alone what an earlier one has taken.
namespace zonstory {

void MarkReelNames(NameRuns& name);     ///< A007C006_160424_R28L, C0012, MVI and its kin.
void MarkDatesAndTimes(NameRuns& name); ///< Dates, timecodes, episodes, and numbers too long for a scene.
void MarkFormats(NameRuns& name);       ///< Frame sizes and rates, codecs, decimals.
void MarkCountedWords(NameRuns& name);  ///< "Day 3", "24 fps", "ProRes 422".

} // namespace zonstory

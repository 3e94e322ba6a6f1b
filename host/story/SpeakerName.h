#pragma once

#include <zoncore/UString.h>

namespace zonstory {

/// A speaker without what a cue adds in brackets at its end: "ANN (V.O.) (CONT'D)" is "ANN".
zoncore::UString SpeakerName(const zoncore::UString& character);

} // namespace zonstory

#include "match/NameNoise.h"

#include "match/NoiseKinds.h"

namespace zonstory {

void MarkNoise(NameRuns& name) {
    MarkReelNames(name);
    MarkDatesAndTimes(name);
    MarkFormats(name);
    MarkCountedWords(name);
}

} // namespace zonstory

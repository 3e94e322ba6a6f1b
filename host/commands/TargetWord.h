#pragma once

#include "clip/Clip.h"

namespace zonstory {

/// What documents call the place of a clip's metadata.
inline const char* TargetWord(Target target) {
    return target == Target::Inside ? "inside" : "sidecar";
}

} // namespace zonstory

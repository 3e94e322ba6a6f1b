#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "clip/Clip.h"
#include "match/Decision.h"

namespace zonstory {

/// What a clip itself says of its scene, beside its name: the iXML of a sound file, its XMP.
struct SceneEvidence {
    std::vector<Statement> statements;
    std::string problem; ///< Why its XMP could not be read, or how it contradicts itself; empty when all is well.
};

/// Reads, and changes nothing.
SceneEvidence GatherEvidence(const std::filesystem::path& clip, const ClipOptions& options);

/// The number of the scene that a clip's XMP carries, and the take's that either of its places does; empty where none is.
struct CarriedNumbers {
    std::string scene;
    std::string take;
    std::string camera = {}; ///< Its label: "A", "A-CAM".
};

CarriedNumbers CarriedNumbersIn(ClipContents& contents);

} // namespace zonstory

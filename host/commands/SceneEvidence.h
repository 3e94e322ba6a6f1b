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
    std::string problem; ///< Why its XMP could not be read; empty when it was.
};

/// Reads, and changes nothing.
SceneEvidence GatherEvidence(const std::filesystem::path& clip, const ClipOptions& options);

/// The number of the scene that a clip's XMP carries, and the take's beside it; empty where it carries none.
struct CarriedNumbers {
    std::string scene;
    std::string take;
    std::string camera = {}; ///< Its label: "A", "A-CAM".
};

CarriedNumbers CarriedNumbersIn(SXMPMeta& xmp);

} // namespace zonstory

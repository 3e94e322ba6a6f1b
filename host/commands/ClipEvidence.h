#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "clip/Clip.h"
#include "match/Decision.h"

namespace zonstory {

/// What a clip itself says of its scene, beside its name: the iXML of a sound file, its XMP.
struct ClipEvidence {
    std::vector<Statement> statements;
    std::string problem; ///< Why its XMP could not be read; empty when it was.
};

/// Reads, and changes nothing.
ClipEvidence GatherEvidence(const std::filesystem::path& clip, const ClipOptions& options);

/// The number that a clip's XMP carries and the take beside it.
struct CarriedScene {
    std::string scene;
    std::string take;
};

CarriedScene CarriedIn(SXMPMeta& xmp);
/// @throws ClipError, XMP_Error
CarriedScene ReadCarriedScene(const std::filesystem::path& clip, const ClipOptions& options);

} // namespace zonstory

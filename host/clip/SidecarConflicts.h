#pragma once

#include <filesystem>
#include <vector>

#include "clip/Clip.h"

namespace zonstory {

/// Two clips that would share one sidecar, so that one would carry the other's scene.
struct SidecarConflict {
    std::filesystem::path first; ///< One of the clips asked about.
    std::filesystem::path second;
    std::filesystem::path sidecar;
};

/// Finds the clips among these whose sidecar is, or would be, another clip's as well, such as A001.mxf beside A001.mkv. The
/// other one may be among these too or merely lie in the same folder: it may have been written in an earlier run. Clips
/// that are written inside have no sidecar. Linear in the number of clips and of files in their folders.
/// @return In the order of the clips; a clip that cannot be read is left out, since its own turn will say why.
std::vector<SidecarConflict> SidecarConflicts(const std::vector<std::filesystem::path>& clips,
                                              const ClipOptions& options);

} // namespace zonstory

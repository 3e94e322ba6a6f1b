#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <zonstoryparser/XMPFiles.h>

#include "clip/Clip.h"
#include "clip/SameMetadata.h"
#include "clip/TargetFile.h"

namespace zonstory {

/// A clip's metadata as it was read, with the file that holds it still open, so that a later step can tell whether it
/// is still the same.
struct ClipState {
    Target target = Target::Inside;
    TargetFile file;                          ///< The clip itself or its sidecar, which may not exist yet.
    XMP_FileFormat format = kXMP_UnknownFile; ///< Of a clip that is written inside.
    bool hasXMP = false;
    SXMPMeta xmp;
    MetadataContent before; ///< What `xmp` said before it was changed.
    MetadataContent wanted; ///< What it says now.
    std::vector<std::string> notes;
};

/// @throws ClipError
ClipState LoadClip(const std::filesystem::path& clip, const ClipOptions& options);

} // namespace zonstory

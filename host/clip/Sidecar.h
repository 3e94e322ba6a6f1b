#pragma once

#include <filesystem>
#include <string>

#include "clip/Clip.h"
#include "files/ByteReader.h"

namespace zonstory {

/// The sidecar's path: clip.xmp, or clip.mov.xmp. The frames of one sequence have one.
std::filesystem::path SidecarPath(const std::filesystem::path& clip, SidecarName name);

/// Whether a file is named as a sidecar is, so that it is no clip.
bool IsSidecarName(const std::filesystem::path& file);

/// Which sidecar a clip has, or would get.
struct SidecarChoice {
    std::filesystem::path path;
    bool exists = false;
    std::string note; ///< For the user; not empty when both names exist.
};

/// The sidecar that exists, under whichever name; of two, the one of the wanted name; if there is none, the wanted name.
/// @param clip  Absolute.
SidecarChoice ChooseSidecar(const std::filesystem::path& clip, SidecarName name);

/// The one named in full, which no other clip can have.
/// @param clip  Absolute.
SidecarChoice FullSidecar(const std::filesystem::path& clip);

/// What a sidecar holds.
/// @param bytes  Its content.
/// @throws ClipError when it is no XMP, so that it is never written over.
SXMPMeta ReadSidecar(const std::string& bytes);

} // namespace zonstory

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "clip/Clip.h"
#include "output/Output.h"

namespace zonstory {

/// A clip that the user named, itself or by a folder.
struct SelectedClip {
    std::filesystem::path path;
    std::string refusal; ///< Why nothing is done with it; empty for a clip that is fit for work.
};

/// The clips that paths stand for, each once. A path that cannot be searched is among them, with the reason.
std::vector<SelectedClip> SelectClips(const std::vector<std::string>& paths, bool recursive);

/// Warns where what is read of a clip contradicts itself.
void WarnOfContradiction(const std::filesystem::path& clip, const std::string& contradiction, Output& output);

/// Refuses the clips that would share one sidecar and so overwrite each other's.
void RefuseSharedSidecars(std::vector<SelectedClip>& clips, const ClipOptions& options);

} // namespace zonstory

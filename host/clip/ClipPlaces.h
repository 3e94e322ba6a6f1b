#pragma once

#include <filesystem>
#include <functional>

#include "clip/ClipState.h"

/// A clip's two places, its inside and its sidecar, and which of them is read and changed.
namespace zonstory {

/// As ReadClip() tells it; the other place beside it.
/// @throws ClipError
StatePointer LoadClip(const std::filesystem::path& clip, const ClipOptions& options);

/// What a clip carries, changed in memory, and the edits by which one of its places comes to say it. No edits where the
/// change makes no difference there.
/// @throws ClipError, DamagedFile, and whatever `change` throws.
StatePointer LoadChanged(const std::filesystem::path& clip, const ClipOptions& options,
                         const std::function<void(SXMPMeta&)>& change);

/// One place, without what the other one says better.
/// @pre `options.rules` is set.
/// @throws ClipError, DamagedFile
StatePointer LoadSettled(const std::filesystem::path& clip, Target place, const ClipOptions& options);

} // namespace zonstory

#pragma once

#include <chrono>

#include "clip/TargetFile.h"

/// Whether a file may be replaced now. Renaming over a file needs no permission to write it and disturbs no program that
/// has it open; but what that program writes next would go to a file that has no name any more.
namespace zonstory {

/// @param target  Nothing is asked of one that does not exist.
/// @param settle  How long it has to have been left alone.
/// @throws ClipError "is protected against writing", also to the superuser: who took every permission to write away wants
///         it to stay as it is; "is open for writing in another program"; "was changed 3 seconds ago".
void RequireAtRest(const TargetFile& target, std::chrono::seconds settle);

/// The last look, right before the file is replaced: nobody changed it since it was opened, and nobody is about to.
/// @throws ClipError
void RequireUnchanged(const TargetFile& target);

} // namespace zonstory

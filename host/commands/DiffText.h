#pragma once

#include "commands/Diff.h"
#include "commands/DiffFindings.h"
#include "output/StyledText.h"

namespace zonstory {

/// For people: the renames, each scene that is not the same with what came and went, the counts, and the clips.
/// @param options  Of these, whether words are shown, and whether the counts are all.
StyledText DiffAsText(const DiffFindings& diff, const DiffOptions& options);

} // namespace zonstory

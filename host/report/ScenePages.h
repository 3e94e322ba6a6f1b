#pragma once

#include "report/ClipLines.h"
#include "report/FactTable.h"
#include "report/PageScene.h"

namespace zonstory {

/// The lined script: every scene with its text and a line for each clip that shows it.
Json LinedScript(const PageInput& input, const std::vector<PageScene>& scenes, const ClipLooks& looks);

/// The strip board, one strip a scene.
inline constexpr std::size_t kLengthColumn = 4;
FactTable StripBoard(const std::vector<PageScene>& scenes, bool hasClips);

} // namespace zonstory

#pragma once

#include "report/PageScene.h"

namespace zonstory {

/// A part for each speaker, by the number of words: in which scenes, how many lines, and the lines themselves.
Json CastPages(const std::vector<PageScene>& scenes, const std::vector<CharacterFacts>& characters);

} // namespace zonstory

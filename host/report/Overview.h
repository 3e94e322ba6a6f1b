#pragma once

#include "report/PageScene.h"

namespace zonstory {

/// The numbers on top, a few words each.
Json HeadNumbers(const PageInput& input, const std::vector<PageScene>& scenes,
                 const std::vector<CharacterFacts>& characters);

/// The pictures, each with the table that it is drawn from.
/// @param characters  In the order of the parts that they have on the page.
Json Figures(const PageInput& input, const std::vector<PageScene>& scenes,
             const std::vector<CharacterFacts>& characters);

} // namespace zonstory

#pragma once

#include <vector>

#include "output/Json.h"
#include "output/Table.h"
#include "story/SceneFacts.h"

namespace zonstory {

/// @name The scenes of a story, one a row, as the commands show them
/// @{
Table SceneTable(const std::vector<SceneFacts>& scenes);
Json SceneJson(const std::vector<SceneFacts>& scenes);
/// @}

} // namespace zonstory

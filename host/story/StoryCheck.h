#pragma once

#include <vector>

#include "story/Finding.h"
#include "story/StoryReader.h"

namespace zonstory {

/// Looks through the scenes of a story's body, and adds what its reader left out or could not place.
/// @param story  Read with its lines.
/// @return The findings by line.
std::vector<Finding> CheckStory(const Story& story);

} // namespace zonstory

#pragma once

#include <vector>

#include <zonstoryparser/StoryModel.h>

#include "story/Finding.h"
#include <zonscreenplay/SourceLines.h>

namespace zonstory {

/// Looks through the scenes of a story's body.
/// @param lines  Recorded while the story was read.
/// @return The findings by line.
std::vector<Finding> CheckStory(const zonstoryparser::Talewright& story, const zonscreenplay::SourceLines& lines);

} // namespace zonstory

#pragma once

#include <string_view>

#include "match/NamePieces.h"

namespace zonstory {

bool IsSceneWord(SlateWord word);

/// One letter that stands for a word where a scene has been named in front: P of S01P02, E of Sz33_E03, C of S19_C3.
SlateWord BelowScene(std::string_view letters);

// The letters in front of, between and behind the numbers of a chunk, as NameRuns folds them: what they say is noted in the
// numbers. False where they make the chunk a word with a number inside.

bool ReadFront(std::string_view letters, bool sceneInFront, NamedNumber& number);
bool ReadMiddle(std::string_view letters, NamedNumber& number, NamedNumber& next);
bool ReadBack(std::string_view letters, NamedNumber& number);

} // namespace zonstory

#pragma once

#include <vector>

#include "match/NamePattern.h"

namespace zonstory {

/// How sure a name is of the scene that its pattern gives it.
/// @param pattern  Has a scene.
Confidence Sureness(const NamePieces& name, const NamePattern& pattern);

/// What a name says by its pattern: the scene, and what else it could mean. Empty where the pattern has no scene.
std::vector<SlateReading> ReadByPattern(const NamePieces& name, const NamePattern& pattern);

} // namespace zonstory

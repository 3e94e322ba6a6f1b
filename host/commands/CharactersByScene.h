#pragma once

#include <vector>

#include "output/Json.h"
#include "output/Table.h"
#include "story/SceneFacts.h"

namespace zonstory {

/// How many lines each speaker has in each scene: a row for every scene, a column for every speaker, empty where there is
/// none.
/// @throws std::length_error for a table that no memory holds.
Table SpeakersByScene(const std::vector<SceneFacts>& scenes, const std::vector<CharacterFacts>& characters);

/// The same as a document.
std::string SpeakersBySceneDocument(const std::vector<SceneFacts>& scenes,
                                    const std::vector<CharacterFacts>& characters);

/// The JSON Schema of that document.
Json SpeakersBySceneSchema();

} // namespace zonstory

#pragma once

#include <vector>

#include <zonstoryparser/Story.h>

namespace zonstory {

/// What a scene says, gathered from its paragraphs as the library gathers it for clips and packets.
struct SceneContent {
    zoncore::UString heading; ///< Of the last heading paragraph.
    zoncore::UString setting;
    zoncore::UString location;
    zoncore::UString timeOfDay;
    zoncore::UString action;
    std::vector<zonstoryparser::CharacterDialogue> dialogues;
};

SceneContent GatherSceneContent(const zonstoryparser::Scene& scene);

/// A speaker without what a cue adds in brackets at its end: "ANN (V.O.) (CONT'D)" is "ANN".
zoncore::UString SpeakerName(const zoncore::UString& character);

/// The scene number that is written for a scene: its own, or its position with three digits, "007".
zoncore::UString NumberToWrite(const zonstoryparser::Scene& scene, std::size_t position);

} // namespace zonstory

#pragma once

#include <cstdint>
#include <vector>

#include <zonstoryparser/Export.h>
#include <zonstoryparser/Story.h>

/// The rules by which Story.h makes metadata of a scene, for hosts that show, check or compare what would be written.
/// Nothing here touches XMP.
namespace zonstoryparser {

/// What a scene's paragraphs say, gathered by kind: what goes into clips and packets. Shots, parentheticals, transitions
/// and unknown kinds say nothing.
struct SceneContent {
    UString firstParagraphID; ///< Of the first paragraph, whatever its kind.
    UString heading;          ///< Of the last heading paragraph; the next three are its parts: ParseSceneHeading().
    UString setting;
    UString location;
    UString timeOfDay;
    UString action; ///< Of all action paragraphs, joined by two spaces.
    std::vector<CharacterDialogue> dialogues;
};

/// Walks the scene's paragraphs once.
ZONSTORYPARSER_API SceneContent GatherSceneContent(const Scene& scene);

/// A speaker without what a cue adds in brackets at its end: "ANN (V.O.) (CONT'D)" is "ANN".
ZONSTORYPARSER_API UString SpeakerName(const UString& character);

/// The scene number that GetSceneXMP() writes: the scene's own, else `sceneIndex` with three digits, "007".
ZONSTORYPARSER_API UString SceneNumberToWrite(const Scene& scene, std::int32_t sceneIndex);

/// Why GetSceneXMP() makes no packet of a scene. The numbers never change.
enum class NoPacketReason : std::int32_t {
    None = 0, ///< It makes one.
    NoParagraphs = 1,
    NoIdentity = 2,  ///< The first paragraph has no "objID".
    NothingSaid = 3, ///< No heading, no action and no speaker with dialogue.
};

ZONSTORYPARSER_API NoPacketReason WhyNoPacket(const Scene& scene);

} // namespace zonstoryparser

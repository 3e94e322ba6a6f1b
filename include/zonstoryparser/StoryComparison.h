#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <zonstoryparser/Export.h>
#include <zonstoryparser/Story.h>

/// Two drafts of one story, compared scene by scene, and what a clip carries of either.
///
///     const StoryComparison comparison = CompareStories(*oldStory, *newStory);
///     for (const SceneComparison& scene : comparison.scenes) { /* scene.state, scene.newPosition, … */ }
///
/// Nothing here changes a story or metadata, and all of it may be called by several threads at once on stories that are
/// read-only. Positions count the scenes of a story's body from 1. Costs grow linearly with the text and, but for drafts
/// made to be slow, with the scenes.
namespace zonstoryparser {

/// What became of a scene from the old draft to the new. The numbers never change.
enum class SceneState : std::int32_t {
    Same = 0,
    Changed = 1,
    Added = 2,      ///< In the new draft alone.
    Removed = 3,    ///< In the old draft alone.
    Omitted = 4,    ///< The new draft keeps its number and says OMITTED.
    Moved = 5,      ///< Says the same at another place among the scenes of both drafts.
    Renumbered = 6, ///< Bears another number than in the old draft; what it says may have changed, too.
};

/// Words that came and went. A word is what stands between white space, compared as it is written.
struct WordCounts {
    std::size_t in = 0;
    std::size_t out = 0;
};

/// A stretch of words that both texts have, or one of them.
struct WordRun {
    enum class Kind : std::int32_t { Kept = 0, In = 1, Out = 2 };
    Kind kind = Kind::Kept;
    UString words; ///< With one space between them.
};

/// One speaker of a scene and what changed of everything that he says in it, his speeches taken together.
struct SpeechComparison {
    UString speaker; ///< As SpeakerName() gives it; of the new draft, where he has been renamed.
    WordCounts words;
};

/// One scene of either draft or of both.
struct SceneComparison {
    std::optional<std::size_t> oldPosition;
    std::optional<std::size_t> newPosition;
    SceneState state = SceneState::Same;
    bool isMoved = false; ///< Whatever the state.
    // What has changed of a scene that both drafts have; renames do not count.
    bool headingChanged = false;
    bool actionChanged = false;
    bool dialogueChanged = false;
    bool durationChanged = false;
    std::vector<SpeechComparison>
        dialogue; ///< Speakers with words that came or went, in the order of their first speech.
    WordCounts action;

    bool HasChanges() const { return headingChanged || actionChanged || dialogueChanged || durationChanged; }
};

/// Scenes of which it cannot be told which became which: each of the new ones is as like to each of the old. They are
/// listed as removed and added among the scenes.
struct SceneTie {
    std::vector<std::size_t> oldPositions;
    std::vector<std::size_t> newPositions;
};

/// A name that the new draft has changed wherever the old one had it.
struct Rename {
    enum class Kind : std::int32_t { Character = 0, Place = 1 };
    Kind kind = Kind::Character;
    UString from;
    UString to;
    std::size_t scenes = 0; ///< How many of the new draft's scenes it concerns.
};

struct StoryComparison {
    std::vector<SceneComparison>
        scenes; ///< In the order of the new draft, a scene that is gone behind its predecessor.
    std::vector<SceneTie> ties;
    std::vector<Rename> renames;

    ZONSTORYPARSER_API bool HasDifferences() const;
};

/// Pairs the scenes of two drafts and compares them.
///
/// Where both drafts number their scenes, each with a number of its own, scenes are paired by number, which is any text
/// and compared as it stands: 12A, A12, I-1-A. Where the texts of two scenes with one number have little in common and
/// one of them is found under another number, the drafts were numbered differently and the texts decide. Without such
/// numbers, scenes are paired by heading and by the words that they have in common, those that few scenes have counting
/// most; scenes alike word for word in their order.
/// The order of scenes that moved is told by the longest run of scenes that kept it.
ZONSTORYPARSER_API StoryComparison CompareStories(const Talewright& oldStory, const Talewright& newStory);

/// The words that came and went from one text to the other, in reading order, as few as possible: the greedy algorithm of
/// E. W. Myers, "An O(ND) Difference Algorithm and Its Variations" (1986). Texts that differ in more than a thousand
/// words are taken as wholly different between the words that they have in common at their beginning and end.
ZONSTORYPARSER_API std::vector<WordRun> CompareWords(const UString& oldText, const UString& newText);

/// What metadata carries of a scene, UTF-8: all that WriteSceneMetadataIntoXMP() writes.
struct CarriedScene {
    std::string setting;
    std::string location;
    std::string timeOfDay;
    std::string action;
    std::vector<CharacterDialogue> dialogues;

    ZONSTORYPARSER_API bool IsEmpty() const;
};
ZONSTORYPARSER_API bool operator==(const CarriedScene& left, const CarriedScene& right);
inline bool operator!=(const CarriedScene& left, const CarriedScene& right) {
    return !(left == right);
}

/// @throws XMP_Error when a namespace cannot be registered.
ZONSTORYPARSER_API CarriedScene ReadCarriedScene(SXMPMeta& xmp);

/// What metadata carries once the scene has been written into it and nothing else was there: the scene is written, and
/// read back, so that this and WriteSceneMetadataIntoXMP() cannot disagree.
/// @param scene  Not null.
/// @throws XMP_Error as WriteSceneMetadataIntoXMP(), and where a value is refused.
ZONSTORYPARSER_API CarriedScene SceneToCarry(boost::intrusive_ptr<Scene> scene);

} // namespace zonstoryparser

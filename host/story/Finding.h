#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zonstory {

/// What a finding is about. The words for them stand in reports and never change.
enum class FindingKind {
    Structure, ///< The file is no well-formed story.
    Setting,   ///< The setting of a heading was not recognised, or only a part of it.
    TimeOfDay, ///< The same of the time of day.
    MissingNumber,
    DuplicateNumber,
    NoPacket, ///< The library makes no packet of the scene.
    SpeakerWithoutDialogue,
    DialogueWithoutSpeaker,
    Duration, ///< A duration that does not parse, or that means something else than it looks like.
    LeftOut,  ///< Text of a kind that the story has no place for.
    Omitted,  ///< A scene that was cut and keeps its number.
    BeforeHeading,
    Unclosed, ///< A comment that begins and never ends.
    Encoding, ///< Bytes that are not what the file's encoding says.
    Assumed,  ///< Something read as more than the format alone makes of it.
};

/// "structure", "setting", "time-of-day", "missing-number" ...
const char* KindWord(FindingKind kind);

/// Something in a story that a script coordinator should look at.
struct Finding {
    std::size_t line = 0; ///< In the story's file, from 1.
    FindingKind kind = FindingKind::Structure;
    std::size_t position = 0; ///< Of the scene, from 1; 0 where it is about none.
    std::string number;       ///< The scene's own, UTF-8; may be empty.
    std::string message;      ///< UTF-8, without line and scene.
};

} // namespace zonstory

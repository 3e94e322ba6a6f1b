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

#include "story/Finding.h"

namespace zonstory {

const char* KindWord(FindingKind kind) {
    switch (kind) {
    case FindingKind::Structure:
        return "structure";
    case FindingKind::Setting:
        return "setting";
    case FindingKind::TimeOfDay:
        return "time-of-day";
    case FindingKind::MissingNumber:
        return "missing-number";
    case FindingKind::DuplicateNumber:
        return "duplicate-number";
    case FindingKind::NoPacket:
        return "no-packet";
    case FindingKind::SpeakerWithoutDialogue:
        return "speaker-without-dialogue";
    case FindingKind::DialogueWithoutSpeaker:
        return "dialogue-without-speaker";
    case FindingKind::Duration:
        break;
    }
    return "duration";
}

} // namespace zonstory

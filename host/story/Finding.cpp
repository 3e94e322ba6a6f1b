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
        return "duration";
    case FindingKind::LeftOut:
        return "left-out";
    case FindingKind::Omitted:
        return "omitted";
    case FindingKind::BeforeHeading:
        return "before-heading";
    case FindingKind::Unclosed:
        return "unclosed";
    case FindingKind::Encoding:
        return "encoding";
    case FindingKind::Assumed:
        break;
    }
    return "assumed";
}

} // namespace zonstory

#include "story/SceneChecks.h"

#include <utility>
#include <vector>

#include <zonstoryparser/Story.h>

namespace zonstory {

namespace {

using zoncore::UString;
using zoncore::UTF16to8;

UString TextOf(const boost::intrusive_ptr<zonstoryparser::Paragraph>& paragraph) {
    UString text;
    zonstoryparser::GetTextRuns(paragraph, text);
    return text;
}

/// Walks cues and dialogue as the library pairs them: dialogue without a speaker waits for the next one.
class Walk {
public:
    explicit Walk(const ReportFinding& report) : mReport(report) {}

    void Cue(UString speaker, std::size_t line) {
        CloseSpeaker();
        if (speaker.empty()) {
            return mReport(line, FindingKind::DialogueWithoutSpeaker, "the cue names no speaker");
        }
        mHasDialogue = !mWaiting.empty();
        ReportWaiting("is given to the next speaker, " + UTF16to8(speaker));
        mSpeaker = std::move(speaker);
        mCueLine = line;
    }

    void Dialogue(std::size_t line) {
        if (mSpeaker.empty()) {
            mWaiting.push_back(line);
        }
        mHasDialogue = true;
    }

    void End() {
        CloseSpeaker();
        ReportWaiting("is lost: nobody has a cue after it");
    }

private:
    void CloseSpeaker() {
        if (!mSpeaker.empty() && !mHasDialogue) {
            mReport(mCueLine, FindingKind::SpeakerWithoutDialogue, UTF16to8(mSpeaker) + " has a cue and says nothing");
        }
        mSpeaker.clear();
    }

    void ReportWaiting(const std::string& fate) {
        for (const std::size_t line : mWaiting) {
            mReport(line, FindingKind::DialogueWithoutSpeaker, "dialogue without a speaker " + fate);
        }
        mWaiting.clear();
    }

    const ReportFinding& mReport;
    UString mSpeaker; // empty while nobody has a cue
    std::size_t mCueLine = 0;
    bool mHasDialogue = false;
    std::vector<std::size_t> mWaiting; // the lines of dialogue that waits for a speaker
};

} // namespace

void CheckDialogue(const zonstoryparser::Scene& scene, const zonscreenplay::SourceLines& lines,
                   const ReportFinding& report) {
    Walk walk(report);
    for (const auto& paragraph : scene.paragraphs) {
        if (paragraph->element == zonstoryparser::kCharacter) {
            walk.Cue(TextOf(paragraph), lines.Of(*paragraph));
        } else if (paragraph->element == zonstoryparser::kDialog && !TextOf(paragraph).empty()) {
            walk.Dialogue(lines.Of(*paragraph));
        }
    }
    walk.End();
}

} // namespace zonstory

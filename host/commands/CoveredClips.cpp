#include "commands/CoveredClips.h"

#include <optional>
#include <utility>

#include "commands/DraftFinder.h"
#include "commands/SaidScene.h"
#include "commands/SceneEvidence.h"
#include "commands/SceneMatching.h"
#include "commands/ScriptReference.h"
#include "commands/Toolkit.h"
#include "match/Decision.h"
#include "match/NamePatterns.h"

namespace zonstory {

namespace {

using Records = std::vector<CoverageRecord>;

// The set-up is part of the number that the clip carries, or its name says it.
std::string SetUpOf(const Decision& decision, const Decision& byName) {
    if (decision.evidence && !decision.evidence->setUp.empty()) {
        return decision.evidence->setUp;
    }
    return byName.scene && byName.scene == decision.scene && byName.evidence ? byName.evidence->setUp : "";
}

// The clips' names say the takes and set-ups that the clips do not, where they agree on the scene.
void AddTakes(Records& records, const SceneNumbers& story) {
    std::vector<std::string> paths;
    std::vector<std::vector<Statement>> carried;
    for (const CoverageRecord& record : records) {
        paths.push_back(record.clip);
        carried.emplace_back();
        if (!record.scene.empty()) {
            carried.back().push_back(StateField(Source::Xmp, record.scene, record.take));
        }
    }
    const NamePatterns names(paths, carried, story, {});
    for (std::size_t at = 0; at < records.size(); ++at) {
        if (carried[at].empty()) {
            continue;
        }
        std::vector<Statement> statements = names.Statements(at);
        const Decision byName = Decide(statements, story, Confidence::Low);
        statements.insert(statements.end(), carried[at].begin(), carried[at].end());
        const Decision decision = Decide(statements, story, Confidence::Low);
        records[at].take = records[at].take.empty() ? decision.take : records[at].take;
        records[at].setUp = SetUpOf(decision, byName);
    }
}

// Which draft's text clips carry. Without an old draft, a clip that names the script it was written from still tells.
class Drafts {
public:
    Drafts(const Story& story, const ClipsOfStory& options)
        : mScript(ReferenceTo(story, options.story)), mOld(ReadOld(options)),
          mDrafts(mOld ? mOld->root.get() : nullptr, *story.root,
                  mOld ? zonstoryparser::CompareStories(*mOld->root, *story.root) : zonstoryparser::StoryComparison()) {
    }

    std::optional<std::string> StateOf(const std::string& number, SXMPMeta& xmp) {
        const ScriptReference script = ReadScriptReference(xmp);
        if (!mOld && script.IsEmpty()) {
            return std::nullopt;
        }
        const bool isOfAnotherDraft = !script.IsEmpty() && script.digest != mScript.digest;
        return DraftStateWord(mDrafts.Find(number, zonstoryparser::ReadCarriedScene(xmp), isOfAnotherDraft).state);
    }

private:
    static std::optional<Story> ReadOld(const ClipsOfStory& options) {
        if (options.oldStory.empty()) {
            return std::nullopt;
        }
        StoryFile file = options.story;
        file.path = options.oldStory;
        return ReadStory(file);
    }

    const ScriptReference mScript;
    const std::optional<Story> mOld;
    DraftFinder mDrafts;
};

// Adds a record for each clip that can be read.
bool ReadRecords(const ClipsOfStory& options, const SceneNumbers& story, Drafts& drafts, Records& records,
                 Output& output) {
    SceneRules rules;
    const ClipOptions clipOptions = rules.In(options.clip);
    bool allRead = true;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        const std::string path = clip.path.string();
        try {
            if (!clip.refusal.empty()) {
                throw ClipError(clip.refusal);
            }
            ClipContents contents = ReadClip(clip.path, clipOptions);
            WarnOfContradiction(clip.path, contents.contradiction, output);
            const CarriedNumbers carried = CarriedNumbersIn(contents);
            records.push_back(
                {path, carried.scene, carried.take, drafts.StateOf(carried.scene, contents.xmp), "", carried.camera});
        } catch (const std::exception& error) {
            output.Error(path + ": " + error.what());
            allRead = false;
        }
    }
    AddTakes(records, story);
    return allRead;
}

} // namespace

std::vector<std::string> InputsOf(const ClipsOfStory& clips) {
    std::vector<std::string> inputs = clips.clips;
    inputs.push_back(clips.story.path);
    inputs.push_back(clips.oldStory);
    return inputs;
}

CoveredClips ReadCoveredClips(const Story& story, const ClipsOfStory& clips, Output& output) {
    CoveredClips covered = {NumbersOf(SceneSelection(*story.root)), {}, {}, true};
    const Toolkit toolkit;
    Drafts drafts(story, clips);
    covered.allRead = ReadRecords(clips, covered.story, drafts, covered.records, output);
    covered.coverage = FindSceneCoverage(covered.records, covered.story);
    return covered;
}

} // namespace zonstory

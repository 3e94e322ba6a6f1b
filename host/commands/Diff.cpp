#include "commands/Diff.h"

#include <algorithm>

#include "commands/ClipSelection.h"
#include "commands/DiffFindings.h"
#include "commands/DiffRecords.h"
#include "commands/DiffText.h"
#include "commands/SaidScene.h"
#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "output/ExitCode.h"

namespace zonstory {

namespace {

std::string NamesOfOutdated(const DiffFindings& diff) {
    std::string names;
    for (const ComparedClip& row : diff.clips) {
        names += row.answer.state == DraftState::Outdated ? row.clip + '\n' : "";
    }
    return names;
}

// Adds a row for each clip that can be read.
bool ReadClips(const DiffOptions& options, DiffFindings& diff, Output& output) {
    DraftFinder drafts(diff.before.root.get(), *diff.after.root, diff.comparison);
    SceneRules rules;
    const ClipOptions clipOptions = rules.In(options.clip);
    bool allRead = true;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        const std::string name = clip.path.string();
        try {
            if (!clip.refusal.empty()) {
                throw ClipError(clip.refusal);
            }
            ClipContents contents = ReadClip(clip.path, clipOptions);
            WarnOfContradiction(clip.path, contents.contradiction, output);
            std::string number;
            zonstoryparser::GetSceneNumberFromXMP(contents.xmp, nullptr, &number);
            diff.clips.push_back({name, drafts.Find(number, zonstoryparser::ReadCarriedScene(contents.xmp))});
        } catch (const std::exception& error) {
            output.Error(name + ": " + error.what());
            allRead = false;
        }
    }
    return allRead;
}

void Print(const DiffFindings& diff, const DiffOptions& options, Output& output) {
    if (options.onlyOutdated) {
        output.Result(NamesOfOutdated(diff));
    } else if (options.format == Format::Json) {
        output.Result(DiffAsJson(diff));
    } else if (options.format == Format::Csv) {
        output.Result(DiffAsCsv(diff, !options.clips.empty()));
    } else {
        output.Result(DiffAsText(diff, options));
    }
}

bool Differs(const DiffFindings& diff) {
    return diff.comparison.HasDifferences() ||
           std::any_of(diff.clips.begin(), diff.clips.end(), [](const ComparedClip& row) {
               return row.answer.state != DraftState::Current && row.answer.state != DraftState::None;
           });
}

} // namespace

int RunDiff(const DiffOptions& options, Output& output) {
    if (options.onlyOutdated && options.clips.empty()) {
        throw UsageError("zonstory: diff --outdated needs a CLIP");
    }
    if (options.oldStory.path == "-" && options.newStory.path == "-") {
        throw UsageError("zonstory: diff can read one draft from standard input, not both");
    }
    const Story before = ReadStory(options.oldStory);
    const Story after = ReadStory(options.newStory);
    const Toolkit toolkit;
    DiffFindings diff(before, after);
    const bool allRead = options.clips.empty() || ReadClips(options, diff, output);
    Print(diff, options, output);
    if (!allRead) {
        return kSomeFailed;
    }
    return options.exitCode && Differs(diff) ? kDiffers : kDone;
}

} // namespace zonstory

#include "commands/Clear.h"

#include <utility>

#include "commands/ClipSelection.h"
#include "commands/SaidScene.h"
#include "commands/SceneSync.h"
#include "commands/Toolkit.h"

namespace zonstory {

namespace {

constexpr BatchWords kWords = {"cleared", "would be cleared"};

} // namespace

int RunClear(const ClearOptions& options, Output& output) {
    const Toolkit toolkit;
    SceneRules rules;
    BatchOptions batch = options.batch;
    batch.clip = rules.In(batch.clip);
    std::vector<SelectedClip> clips = SelectClips(options.clips, options.recursive);
    RefuseSharedSidecars(clips, batch.clip);
    std::vector<ClipTask> tasks;
    tasks.reserve(clips.size());
    for (SelectedClip& clip : clips) {
        tasks.push_back({std::move(clip.path), std::move(clip.refusal), std::nullopt, "", ClearScene});
    }
    RunFacts facts;
    facts.verb = "clear";
    return RunBatch(tasks, batch, kWords, std::move(facts), output);
}

} // namespace zonstory

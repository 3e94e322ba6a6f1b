#include "commands/Write.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "commands/ClipSelection.h"
#include "commands/SaidScene.h"
#include "commands/SceneMap.h"
#include "commands/SceneSync.h"
#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "output/CsvReader.h"

namespace zonstory {

namespace {

constexpr BatchWords kWords = {"written", "would be written"};
constexpr BatchWords kClearedWords = {"cleared", "would be cleared"};

void CheckUsage(const WriteOptions& options) {
    const std::array ways = {!options.scene.empty(), !options.map.empty(), options.isMatching};
    if (std::count(ways.begin(), ways.end(), true) != 1) {
        throw UsageError("zonstory: write needs --scene SCENE CLIP... or --map FILE or --match CLIP...");
    }
    if (!options.isMatching && options.replaces) {
        throw UsageError("zonstory: write takes --replace with --match alone");
    }
    if (options.replaces && options.onlyEmpty) {
        throw UsageError("zonstory: write takes --replace or --only-empty, not both");
    }
    if (!options.isMatching && !options.match.logs.empty()) {
        throw UsageError("zonstory: write takes a --log with --match alone");
    }
    if (!options.map.empty() && !options.clips.empty()) {
        throw UsageError("zonstory: write --map takes its clips from the map alone");
    }
    if (options.map.empty() && options.clips.empty()) {
        throw UsageError(fmt::format("zonstory: write {} needs a CLIP", options.isMatching ? "--match" : "--scene"));
    }
}

/// The clips of a run and their scenes, one for one.
struct Selection {
    std::vector<SelectedClip> clips;
    std::vector<SelectedScene> scenes;
    std::vector<std::optional<std::string>> unmatched; ///< Why no scene was found for a clip; none where one was.
    std::vector<MapAction> actions;
};

/// What the clips of a run have in common.
struct Writing {
    const SceneNumbers numbers;
    const ScriptReference script;
    const Existing existing;
};

Existing ExistingOf(const WriteOptions& options) {
    if (options.onlyEmpty) {
        return Existing::Stays;
    }
    return options.isMatching && !options.replaces ? Existing::OtherSceneStays : Existing::Replaced;
}

// A clip that is refused, or for which no scene was found, has none.
ClipTask MakeTask(SelectedClip clip, const SelectedScene& scene, std::optional<std::string> unmatched, MapAction action,
                  const Writing& writing) {
    ClipTask task;
    task.clip = std::move(clip.path);
    task.refusal = std::move(clip.refusal);
    task.unmatched = std::move(unmatched);
    task.isSkipped = action == MapAction::Skip && task.refusal.empty();
    if (action == MapAction::Clear) {
        task.words = &kClearedWords;
        task.change = ClearScene;
    } else if (scene.scene) {
        task.scene = zoncore::UTF16to8(NumberToWrite(scene));
        task.change = [scene, &writing](SXMPMeta& xmp) {
            return WriteScene({scene, writing.numbers, writing.script, writing.existing}, xmp);
        };
    }
    return task;
}

Selection SelectForOneScene(const WriteOptions& options, const SceneSelection& scenes) {
    Selection selection;
    const SelectedScene scene = scenes.Find(options.scene);
    selection.clips = SelectClips(options.clips, options.recursive);
    selection.scenes.assign(selection.clips.size(), scene);
    return selection;
}

// A clip may stand in the map twice when both rows say the same.
Selection SelectByMap(const WriteOptions& options, const SceneSelection& scenes, Output& output) {
    const SceneMap map = ReadSceneMap(options.map, scenes);
    if (map.rowsWithoutScene > 0) {
        output.Note(fmt::format("{}: rows without a scene, passed over: {}", options.map, map.rowsWithoutScene));
    }
    Selection selection;
    std::unordered_map<std::string, const MappedClip*> seen;
    for (const MappedClip& row : map.clips) {
        for (SelectedClip& clip : SelectClips({row.clip}, options.recursive)) {
            std::error_code ignored;
            const std::string key = std::filesystem::weakly_canonical(clip.path, ignored).string();
            const auto [entry, isNew] = seen.try_emplace(key, &row);
            if (isNew) {
                selection.clips.push_back(std::move(clip));
                selection.scenes.push_back(row.scene);
                selection.actions.push_back(row.action);
            } else if (!entry->second->WantsTheSame(row)) {
                throw CsvError(options.map, row.line,
                               fmt::format("{} has another scene in line {}", clip.path.string(), entry->second->line));
            }
        }
    }
    return selection;
}

// A clip without an answer is left alone; one that cannot be read at all fails as it does elsewhere.
Selection SelectByMatch(const WriteOptions& options, const SceneSelection& scenes, const ClipOptions& clip,
                        Output& output) {
    ClipMatches matches =
        MatchClips(scenes, SelectClips(options.clips, options.recursive), options.match, clip, output);
    const std::vector<SelectedScene> all = scenes.All();
    Selection selection;
    for (ClipMatch& match : matches.clips) {
        const bool isUnmatched = match.clip.refusal.empty() && !match.IsSettled();
        selection.scenes.push_back(match.IsSettled() ? all[*match.decision.scene] : SelectedScene());
        selection.unmatched.push_back(isUnmatched ? std::optional(match.decision.reason) : std::nullopt);
        selection.clips.push_back(std::move(match.clip));
    }
    output.Note(Summary(matches));
    return selection;
}

Selection Select(const WriteOptions& options, const SceneSelection& scenes, const ClipOptions& clip, Output& output) {
    if (options.isMatching) {
        return SelectByMatch(options, scenes, clip, output);
    }
    return options.map.empty() ? SelectForOneScene(options, scenes) : SelectByMap(options, scenes, output);
}

RunFacts WriteFacts(const ScriptReference& script) {
    RunFacts facts;
    facts.verb = "write";
    facts.story = script.name;
    facts.digest = script.digest;
    return facts;
}

} // namespace

int RunWrite(const WriteOptions& options, Output& output) {
    CheckUsage(options);
    const Story story = ReadStory(options.story);
    const SceneSelection scenes(*story.root);
    const Writing writing = {NumbersOf(scenes), ReferenceTo(story, options.story), ExistingOf(options)};
    const Toolkit toolkit;
    SceneRules rules;
    BatchOptions batch = options.batch;
    batch.clip = rules.In(batch.clip);
    Selection selection = Select(options, scenes, batch.clip, output);
    selection.unmatched.resize(selection.clips.size());
    selection.actions.resize(selection.clips.size());
    RefuseSharedSidecars(selection.clips, batch.clip);
    std::vector<ClipTask> tasks;
    tasks.reserve(selection.clips.size());
    for (std::size_t index = 0; index < selection.clips.size(); ++index) {
        tasks.push_back(MakeTask(std::move(selection.clips[index]), selection.scenes[index],
                                 std::move(selection.unmatched[index]), selection.actions[index], writing));
    }
    return RunBatch(tasks, batch, kWords, WriteFacts(writing.script), output);
}

} // namespace zonstory

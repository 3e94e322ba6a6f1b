#include "commands/Write.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "commands/ClipSelection.h"
#include "commands/SceneMap.h"
#include "commands/SceneSync.h"
#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "output/CsvReader.h"
#include "output/ExitCode.h"
#include "story/SceneContent.h"
#include "story/StoryReader.h"

namespace zonstory {

namespace {

constexpr BatchWords kWords = {"written", "would be written"};

ClipTask MakeTask(SelectedClip clip, const SelectedScene& scene) {
    return {std::move(clip.path), std::move(clip.refusal),
            zoncore::UTF16to8(NumberToWrite(*scene.scene, scene.position)),
            [scene](SXMPMeta& xmp) { return WriteScene(scene, xmp); }};
}

void CheckUsage(const WriteOptions& options) {
    if (options.scene.empty() == options.map.empty()) {
        throw UsageError("zonstory: write needs --scene SCENE CLIP... or --map FILE");
    }
    if (options.map.empty() == options.clips.empty()) {
        throw UsageError(options.map.empty() ? "zonstory: write --scene needs a CLIP"
                                             : "zonstory: write --map takes its clips from the map alone");
    }
}

/// The clips of a run and their scenes, one for one.
struct Selection {
    std::vector<SelectedClip> clips;
    std::vector<SelectedScene> scenes;
};

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
            } else if (entry->second->scene.position != row.scene.position) {
                throw CsvError(options.map, row.line,
                               fmt::format("{} has another scene in line {}", clip.path.string(), entry->second->line));
            }
        }
    }
    return selection;
}

} // namespace

int RunWrite(const WriteOptions& options, Output& output) {
    CheckUsage(options);
    const Story story = ReadStory(options.story);
    const SceneSelection scenes(*story.root);
    Selection selection =
        options.map.empty() ? SelectForOneScene(options, scenes) : SelectByMap(options, scenes, output);
    const Toolkit toolkit;
    RefuseSharedSidecars(selection.clips, options.batch.clip);
    std::vector<ClipTask> tasks;
    for (std::size_t index = 0; index < selection.clips.size(); ++index) {
        tasks.push_back(MakeTask(std::move(selection.clips[index]), selection.scenes[index]));
    }
    return RunBatch(tasks, options.batch, kWords, output);
}

} // namespace zonstory

#include "commands/Write.h"

#include "commands/SceneSync.h"
#include "commands/Toolkit.h"
#include "output/ExitCode.h"
#include "story/SceneContent.h"
#include "story/StoryReader.h"

namespace zonstory {

namespace {

constexpr BatchWords kWords = {"written", "would be written"};

ClipTask MakeTask(const std::filesystem::path& clip, const SelectedScene& scene) {
    return {clip, zoncore::UTF16to8(NumberToWrite(*scene.scene, scene.position)),
            [scene](SXMPMeta& xmp) { return WriteScene(scene, xmp); }};
}

} // namespace

int RunWrite(const WriteOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const SceneSelection selection(*story.root);
    const SelectedScene scene = selection.Find(options.scene);
    std::vector<ClipTask> tasks;
    for (const std::string& clip : options.clips) {
        tasks.push_back(MakeTask(clip, scene));
    }
    const Toolkit toolkit;
    return RunBatch(tasks, options.batch, kWords, output);
}

} // namespace zonstory

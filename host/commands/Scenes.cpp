#include "commands/Scenes.h"

#include <nlohmann/json.hpp>

#include "commands/SceneTable.h"
#include "output/ExitCode.h"

namespace zonstory {

int RunScenes(const ScenesOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const std::vector<SceneFacts> scenes = DescribeScenes(story);
    if (options.format == Format::Json) {
        Json document = JsonDocument("scenes", 1);
        document["scenes"] = SceneJson(scenes);
        output.Result(JsonText(document));
    } else {
        const Table table = SceneTable(scenes);
        output.Result(options.format == Format::Csv ? table.AsCsv() : table.AsText());
    }
    return kDone;
}

} // namespace zonstory

#include "commands/Scenes.h"

#include "commands/SceneFields.h"
#include "output/ExitCode.h"

namespace zonstory {

namespace {

struct ScenesDocument {
    std::vector<SceneFacts> scenes;
};

} // namespace

template <>
const Fields<ScenesDocument>& FieldsOf<ScenesDocument>() {
    static const Fields<ScenesDocument> fields = {{"scenes", nullptr, &ScenesDocument::scenes}};
    return fields;
}

int RunScenes(const ScenesOptions& options, Output& output) {
    RefuseToReplace(options.target.file, {options.story.path});
    const Story story = ReadStory(options.story);
    const ScenesDocument document = {DescribeScenes(story)};
    DeliverResult(options.target,
                  {"scenes", [&] { return RecordTable(document.scenes).AsText(); },
                   [&] { return DocumentText("scenes", document); }, [&] { return RecordTable(document.scenes); }},
                  output);
    return kDone;
}

Json ScenesSchema() {
    return DocumentSchema<ScenesDocument>("scenes");
}

} // namespace zonstory

#include "commands/Check.h"

#include <optional>
#include <vector>

#include <fmt/format.h>

#include "output/ExitCode.h"
#include "output/Record.h"
#include "output/SafeText.h"
#include "story/StoryCheck.h"

namespace zonstory {

namespace {

struct FindingScene {
    std::size_t position;
    std::string number;
};

struct CheckDocument {
    std::vector<Finding> findings;
};

std::optional<std::size_t> PositionOf(const Finding& finding) {
    return finding.position == 0 ? std::nullopt : std::optional(finding.position);
}

std::optional<FindingScene> SceneOf(const Finding& finding) {
    return finding.position == 0 ? std::nullopt : std::optional(FindingScene{finding.position, finding.number});
}

std::string SceneName(const Finding& finding) {
    if (finding.position == 0) {
        return "";
    }
    const std::string position = fmt::format("#{}", finding.position);
    return finding.number.empty() ? position : finding.number + " (" + position + ")";
}

std::string AsText(const std::vector<Finding>& findings, const std::string& story) {
    std::string text;
    for (const Finding& finding : findings) {
        const std::string scene = SceneName(finding);
        text += SafeLine(fmt::format("{}:{}: {}{}", story, finding.line, scene.empty() ? "" : "scene " + scene + ": ",
                                     finding.message)) +
                '\n';
    }
    return text;
}

} // namespace

template <>
const Fields<FindingScene>& FieldsOf<FindingScene>() {
    static const Fields<FindingScene> fields = {{"position", nullptr, &FindingScene::position},
                                                {"number", nullptr, &FindingScene::number}};
    return fields;
}

template <>
const Fields<Finding>& FieldsOf<Finding>() {
    static const Fields<Finding> fields = {
        {"line", nullptr, &Finding::line},
        {"kind", nullptr, [](const Finding& finding) { return KindWord(finding.kind); }},
        {"position", nullptr, PositionOf, Shown::InTables},
        {"number", nullptr, &Finding::number, Shown::InTables},
        {"message", nullptr, &Finding::message},
        {"scene", nullptr, SceneOf, Shown::InJson},
    };
    return fields;
}

template <>
const Fields<CheckDocument>& FieldsOf<CheckDocument>() {
    static const Fields<CheckDocument> fields = {{"findings", nullptr, &CheckDocument::findings}};
    return fields;
}

namespace {

void Print(const CheckDocument& document, const CheckOptions& options, Output& output) {
    const std::string name = options.story.Name();
    output.Result(InFormat(
        options.format, [&] { return AsText(document.findings, name); },
        [&] { return DocumentText("check", document); }, [&] { return RecordTable(document.findings).AsCsv(); }));
}

} // namespace

int RunCheck(const CheckOptions& options, Output& output) {
    try {
        const Story story = ReadStory(options.story, true);
        const CheckDocument document = {CheckStory(story)};
        Print(document, options, output);
        output.Note(fmt::format("{} findings", document.findings.size()));
        return kDone;
    } catch (const zonscreenplay::ReadError& error) {
        if (error.Where().line == 0) {
            throw;
        }
        Print({{{error.Where().line, FindingKind::Structure, 0, "", error.Message()}}}, options, output);
        output.Error(error.what());
        return kStoryUnread;
    }
}

Json CheckSchema() {
    return DocumentSchema<CheckDocument>("check");
}

} // namespace zonstory

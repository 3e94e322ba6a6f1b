#include "commands/Check.h"

#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "output/ExitCode.h"
#include "output/Json.h"
#include "output/SafeText.h"
#include "output/Table.h"
#include "story/StoryCheck.h"

namespace zonstory {

namespace {

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

std::string AsCsv(const std::vector<Finding>& findings) {
    Table table({{"line", ""}, {"kind", ""}, {"position", ""}, {"number", ""}, {"message", ""}});
    for (const Finding& finding : findings) {
        table.AddRow({std::to_string(finding.line), KindWord(finding.kind),
                      finding.position == 0 ? "" : std::to_string(finding.position), finding.number, finding.message});
    }
    return table.AsCsv();
}

std::string AsJson(const std::vector<Finding>& findings) {
    Json rows = Json::array();
    for (const Finding& finding : findings) {
        Json row = {{"line", finding.line}, {"kind", KindWord(finding.kind)}, {"message", finding.message}};
        row["scene"] =
            finding.position == 0 ? Json(nullptr) : Json({{"position", finding.position}, {"number", finding.number}});
        rows.push_back(std::move(row));
    }
    Json document = JsonDocument("check", 1);
    document["findings"] = std::move(rows);
    return JsonText(document);
}

void Print(const std::vector<Finding>& findings, const CheckOptions& options, Output& output) {
    const std::string name = options.story.Name();
    output.Result(InFormat(
        options.format, [&] { return AsText(findings, name); }, [&] { return AsJson(findings); },
        [&] { return AsCsv(findings); }));
}

} // namespace

int RunCheck(const CheckOptions& options, Output& output) {
    try {
        const Story story = ReadStory(options.story, true);
        const std::vector<Finding> findings = CheckStory(story);
        Print(findings, options, output);
        output.Note(fmt::format("{} findings", findings.size()));
        return kDone;
    } catch (const zonscreenplay::ReadError& error) {
        if (error.Where().line == 0) {
            throw;
        }
        Print({{error.Where().line, FindingKind::Structure, 0, "", error.Message()}}, options, output);
        output.Error(error.what());
        return kStoryUnread;
    }
}

} // namespace zonstory

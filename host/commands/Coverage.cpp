#include "commands/Coverage.h"

#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "commands/ClipEvidence.h"
#include "commands/ClipMatching.h"
#include "commands/Toolkit.h"
#include "match/ClipStatements.h"
#include "match/Coverage.h"
#include "output/ExitCode.h"
#include "output/Json.h"
#include "output/SafeText.h"
#include "output/Table.h"

namespace zonstory {

namespace {

using Records = std::vector<CoverageRecord>;

// The clip's own word, else its name's where that agrees on the scene.
std::string TakeOf(const CarriedScene& carried, const std::string& path, const SceneNumbers& story) {
    if (!carried.take.empty() || carried.scene.empty()) {
        return carried.take;
    }
    std::vector<Statement> statements = StatePath(path, SlateStyle::Scene);
    statements.push_back(StateField(Source::Xmp, carried.scene, ""));
    return Decide(statements, story, Confidence::Low).take;
}

// Adds a record for each clip that can be read.
bool ReadRecords(const CoverageOptions& options, const SceneNumbers& story, Records& records, Output& output) {
    bool allRead = true;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        const std::string path = clip.path.string();
        try {
            if (!clip.refusal.empty()) {
                throw ClipError(clip.refusal);
            }
            const CarriedScene carried = ReadCarriedScene(clip.path, options.clip);
            records.push_back({path, carried.scene, TakeOf(carried, path, story)});
        } catch (const std::exception& error) {
            output.Error(path + ": " + error.what());
            allRead = false;
        }
    }
    return allRead;
}

struct Others {
    const char* name;  ///< In CSV and JSON; they do not change.
    const char* title; ///< In text.
    std::vector<std::size_t> Coverage::*clips;
};

constexpr Others kOthers[] = {{"unknown", "carries a scene that the story does not have", &Coverage::unknown},
                              {"ambiguous", "carries a number that several scenes have", &Coverage::ambiguous},
                              {"none", "carries no scene", &Coverage::withoutScene}};

std::string ClipAndTake(const CoverageRecord& record) {
    return record.take.empty() ? record.clip : fmt::format("{} (take {})", record.clip, record.take);
}

std::string AsText(const Coverage& coverage, const Records& records, const SceneNumbers& story) {
    Table table({{"scene", "scene"}, {"clips", "clips", Align::Right}, {"names", "shown by"}});
    for (std::size_t scene = 0; scene < coverage.scenes.size(); ++scene) {
        const std::vector<std::size_t>& clips = coverage.scenes[scene].clips;
        std::string names;
        for (const std::size_t clip : clips) {
            names += (names.empty() ? "" : ", ") + ClipAndTake(records[clip]);
        }
        table.AddRow({SceneLabel(scene, story), std::to_string(clips.size()), names.empty() ? "-" : names});
    }
    std::string text = table.AsText();
    for (const Others& others : kOthers) {
        for (const std::size_t clip : coverage.*others.clips) {
            const std::string scene = records[clip].scene.empty() ? "" : ": " + records[clip].scene;
            text += SafeLine(fmt::format("{} {}{}", records[clip].clip, others.title, scene)) + '\n';
        }
    }
    return text;
}

// One row for every clip, and one for every scene without a clip.
std::string AsCsv(const Coverage& coverage, const Records& records, const SceneNumbers& story) {
    Table table({{"position", ""}, {"scene", ""}, {"state", ""}, {"clip", ""}, {"take", ""}});
    for (std::size_t scene = 0; scene < coverage.scenes.size(); ++scene) {
        const std::string position = std::to_string(scene + 1);
        for (const std::size_t clip : coverage.scenes[scene].clips) {
            table.AddRow({position, story.Number(scene), "covered", records[clip].clip, records[clip].take});
        }
        if (coverage.scenes[scene].clips.empty()) {
            table.AddRow({position, story.Number(scene), "uncovered", "", ""});
        }
    }
    for (const Others& others : kOthers) {
        for (const std::size_t clip : coverage.*others.clips) {
            table.AddRow({"", records[clip].scene, others.name, records[clip].clip, records[clip].take});
        }
    }
    return table.AsCsv();
}

Json ClipsJson(const std::vector<std::size_t>& clips, const Records& records) {
    Json rows = Json::array();
    for (const std::size_t clip : clips) {
        rows.push_back({{"clip", JsonString(records[clip].clip)},
                        {"scene", JsonString(records[clip].scene)},
                        {"take", JsonString(records[clip].take)}});
    }
    return rows;
}

std::string AsJson(const Coverage& coverage, const Records& records, const SceneNumbers& story) {
    Json scenes = Json::array();
    for (std::size_t scene = 0; scene < coverage.scenes.size(); ++scene) {
        scenes.push_back({{"position", scene + 1},
                          {"number", story.Number(scene)},
                          {"clips", ClipsJson(coverage.scenes[scene].clips, records)}});
    }
    Json document = JsonDocument("coverage", 1);
    document["scenes"] = std::move(scenes);
    for (const Others& others : kOthers) {
        document[others.name] = ClipsJson(coverage.*others.clips, records);
    }
    return JsonText(document);
}

std::string AsFormat(Format format, const Coverage& coverage, const Records& records, const SceneNumbers& story) {
    return InFormat(
        format, [&] { return AsText(coverage, records, story); }, [&] { return AsJson(coverage, records, story); },
        [&] { return AsCsv(coverage, records, story); });
}

} // namespace

int RunCoverage(const CoverageOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const SceneNumbers numbers = NumbersOf(SceneSelection(*story.root));
    const Toolkit toolkit;
    Records records;
    const bool allRead = ReadRecords(options, numbers, records, output);
    const Coverage coverage = FindCoverage(records, numbers);
    output.Result(AsFormat(options.format, coverage, records, numbers));
    output.Note(fmt::format("{} of {} scenes shown", numbers.size() - coverage.uncovered.size(), numbers.size()));
    const bool allMatched = coverage.unknown.empty() && coverage.ambiguous.empty();
    return !allRead ? kSomeFailed : allMatched ? kDone : kUnmatched;
}

} // namespace zonstory

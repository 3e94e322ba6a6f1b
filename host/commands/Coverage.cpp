#include "commands/Coverage.h"

#include <optional>
#include <utility>

#include <fmt/format.h>

#include "match/Decision.h"
#include "output/ExitCode.h"
#include "output/Record.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

using Records = std::vector<CoverageRecord>;

struct Others {
    const char* title; ///< In text.
    std::vector<std::size_t> SceneCoverage::*clips;
};

constexpr Others kOthers[] = {{"carries a scene that the story does not have", &SceneCoverage::unknown},
                              {"carries a number that several scenes have", &SceneCoverage::ambiguous},
                              {"carries no scene", &SceneCoverage::withoutScene}};

std::string ClipAndTake(const CoverageRecord& record) {
    std::string facts = record.take.empty() ? "" : "take " + record.take;
    if (record.state && *record.state != "current") {
        facts += (facts.empty() ? "" : ", ") + *record.state;
    }
    return facts.empty() ? record.clip : fmt::format("{} ({})", record.clip, facts);
}

std::string AsText(const SceneCoverage& coverage, const Records& records, const SceneNumbers& story) {
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

struct CoveredScene {
    std::size_t position = 0;
    std::string number;
    Records clips;
};

struct CoverageDocument {
    std::vector<CoveredScene> scenes;
    Records unknown;
    Records ambiguous;
    Records none;
};

// In CSV: one for every clip, and one for every scene without a clip.
struct CoverageRow {
    std::optional<std::size_t> position;
    std::string scene;
    std::string state;
    std::string clip;
    std::string take;
    std::optional<std::string> draft;
};

Records Chosen(const Records& records, const std::vector<std::size_t>& clips) {
    Records chosen;
    for (const std::size_t clip : clips) {
        chosen.push_back(records[clip]);
    }
    return chosen;
}

CoverageDocument DocumentOf(const SceneCoverage& coverage, const Records& records, const SceneNumbers& story) {
    CoverageDocument document;
    for (std::size_t scene = 0; scene < coverage.scenes.size(); ++scene) {
        document.scenes.push_back({scene + 1, story.Number(scene), Chosen(records, coverage.scenes[scene].clips)});
    }
    document.unknown = Chosen(records, coverage.unknown);
    document.ambiguous = Chosen(records, coverage.ambiguous);
    document.none = Chosen(records, coverage.withoutScene);
    return document;
}

std::vector<CoverageRow> RowsOf(const CoverageDocument& document) {
    std::vector<CoverageRow> rows;
    for (const CoveredScene& scene : document.scenes) {
        for (const CoverageRecord& clip : scene.clips) {
            rows.push_back({scene.position, scene.number, "covered", clip.clip, clip.take, clip.state});
        }
        if (scene.clips.empty()) {
            rows.push_back({scene.position, scene.number, "uncovered", "", "", std::nullopt});
        }
    }
    for (const auto& [state, clips] :
         {std::pair{"unknown", &document.unknown}, {"ambiguous", &document.ambiguous}, {"none", &document.none}}) {
        for (const CoverageRecord& clip : *clips) {
            rows.push_back({std::nullopt, clip.scene, state, clip.clip, clip.take, clip.state});
        }
    }
    return rows;
}

} // namespace

template <>
const Fields<CoverageRecord>& FieldsOf<CoverageRecord>() {
    static const Fields<CoverageRecord> fields = {
        {"clip", nullptr, &CoverageRecord::clip},
        {"scene", nullptr, &CoverageRecord::scene},
        {"take", nullptr, &CoverageRecord::take},
        Field<CoverageRecord>("state", nullptr, &CoverageRecord::state).WhereTold()};
    return fields;
}

template <>
const Fields<CoveredScene>& FieldsOf<CoveredScene>() {
    static const Fields<CoveredScene> fields = {{"position", nullptr, &CoveredScene::position},
                                                {"number", nullptr, &CoveredScene::number},
                                                {"clips", nullptr, &CoveredScene::clips}};
    return fields;
}

template <>
const Fields<CoverageDocument>& FieldsOf<CoverageDocument>() {
    static const Fields<CoverageDocument> fields = {{"scenes", nullptr, &CoverageDocument::scenes},
                                                    {"unknown", nullptr, &CoverageDocument::unknown},
                                                    {"ambiguous", nullptr, &CoverageDocument::ambiguous},
                                                    {"none", nullptr, &CoverageDocument::none}};
    return fields;
}

template <>
const Fields<CoverageRow>& FieldsOf<CoverageRow>() {
    static const Fields<CoverageRow> fields = {{"position", nullptr, &CoverageRow::position},
                                               {"scene", nullptr, &CoverageRow::scene},
                                               {"state", nullptr, &CoverageRow::state},
                                               {"clip", nullptr, &CoverageRow::clip},
                                               {"take", nullptr, &CoverageRow::take},
                                               Field<CoverageRow>("draft", nullptr, &CoverageRow::draft).WhereTold()};
    return fields;
}

int RunCoverage(const CoverageOptions& options, Output& output) {
    RefuseToReplace(options.target.file, InputsOf(options.clips));
    const Story story = ReadStory(options.clips.story);
    const CoveredClips covered = ReadCoveredClips(story, options.clips, output);
    const SceneCoverage& coverage = covered.coverage;
    const std::size_t sceneCount = covered.story.size();
    const auto document = [&] { return DocumentOf(covered.coverage, covered.records, covered.story); };
    DeliverResult(options.target,
                  {"coverage", [&] { return AsText(covered.coverage, covered.records, covered.story); },
                   [&] { return DocumentText("coverage", document()); },
                   [&] { return RecordTable(RowsOf(document())); }},
                  output);
    output.Note(fmt::format("{} of {} scenes shown", sceneCount - coverage.uncovered.size(), sceneCount));
    const bool allMatched = coverage.unknown.empty() && coverage.ambiguous.empty();
    return !covered.allRead ? kSomeFailed : allMatched ? kDone : kUnmatched;
}

Json CoverageSchema() {
    return DocumentSchema<CoverageDocument>("coverage");
}

} // namespace zonstory

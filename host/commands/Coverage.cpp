#include "commands/Coverage.h"

#include <optional>
#include <utility>

#include <fmt/format.h>

#include "commands/DraftFinder.h"
#include "commands/SceneEvidence.h"
#include "commands/SceneMatching.h"
#include "commands/ScriptReference.h"
#include "commands/Toolkit.h"
#include "match/Decision.h"
#include "match/NamePatterns.h"
#include "match/SceneCoverage.h"
#include "output/ExitCode.h"
#include "output/Record.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

using Records = std::vector<CoverageRecord>;

// The clips' names say the takes that the clips do not, where they agree on the scene.
void AddTakes(Records& records, const SceneNumbers& story) {
    std::vector<std::string> paths;
    std::vector<std::vector<Statement>> carried;
    for (const CoverageRecord& record : records) {
        paths.push_back(record.clip);
        carried.emplace_back();
        if (!record.scene.empty()) {
            carried.back().push_back(StateField(Source::Xmp, record.scene, record.take));
        }
    }
    const NamePatterns names(paths, carried, story, {});
    for (std::size_t at = 0; at < records.size(); ++at) {
        std::vector<Statement> statements = names.Statements(at);
        statements.insert(statements.end(), carried[at].begin(), carried[at].end());
        if (records[at].take.empty() && !carried[at].empty()) {
            records[at].take = Decide(statements, story, Confidence::Low).take;
        }
    }
}

// Which draft's text clips carry. Without an old draft, a clip that names the script it was written from still tells.
class Drafts {
public:
    Drafts(const Story& story, const CoverageOptions& options)
        : mScript(ReferenceTo(story, options.story)), mOld(ReadOld(options)),
          mDrafts(mOld ? mOld->root.get() : nullptr, *story.root,
                  mOld ? zonstoryparser::CompareStories(*mOld->root, *story.root) : zonstoryparser::StoryComparison()) {
    }

    std::optional<std::string> StateOf(const std::string& number, SXMPMeta& xmp) {
        const ScriptReference script = ReadScriptReference(xmp);
        if (!mOld && script.IsEmpty()) {
            return std::nullopt;
        }
        const bool isOfAnotherDraft = !script.IsEmpty() && script.digest != mScript.digest;
        return DraftStateWord(mDrafts.Find(number, zonstoryparser::ReadCarriedScene(xmp), isOfAnotherDraft).state);
    }

private:
    static std::optional<Story> ReadOld(const CoverageOptions& options) {
        if (options.oldStory.empty()) {
            return std::nullopt;
        }
        StoryFile file = options.story;
        file.path = options.oldStory;
        return ReadStory(file);
    }

    const ScriptReference mScript;
    const std::optional<Story> mOld;
    DraftFinder mDrafts;
};

// Adds a record for each clip that can be read.
bool ReadRecords(const CoverageOptions& options, const SceneNumbers& story, Drafts& drafts, Records& records,
                 Output& output) {
    bool allRead = true;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        const std::string path = clip.path.string();
        try {
            if (!clip.refusal.empty()) {
                throw ClipError(clip.refusal);
            }
            ClipContents contents = ReadClip(clip.path, options.clip);
            const CarriedNumbers carried = CarriedNumbersIn(contents.xmp);
            records.push_back({path, carried.scene, carried.take, drafts.StateOf(carried.scene, contents.xmp)});
        } catch (const std::exception& error) {
            output.Error(path + ": " + error.what());
            allRead = false;
        }
    }
    AddTakes(records, story);
    return allRead;
}

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

namespace {

std::string AsFormat(Format format, const SceneCoverage& coverage, const Records& records, const SceneNumbers& story) {
    return InFormat(
        format, [&] { return AsText(coverage, records, story); },
        [&] { return DocumentText("coverage", DocumentOf(coverage, records, story)); },
        [&] { return RecordTable(RowsOf(DocumentOf(coverage, records, story))).AsCsv(); });
}

} // namespace

int RunCoverage(const CoverageOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const SceneNumbers numbers = NumbersOf(SceneSelection(*story.root));
    const Toolkit toolkit;
    Drafts drafts(story, options);
    Records records;
    const bool allRead = ReadRecords(options, numbers, drafts, records, output);
    const SceneCoverage coverage = FindSceneCoverage(records, numbers);
    output.Result(AsFormat(options.format, coverage, records, numbers));
    output.Note(fmt::format("{} of {} scenes shown", numbers.size() - coverage.uncovered.size(), numbers.size()));
    const bool allMatched = coverage.unknown.empty() && coverage.ambiguous.empty();
    return !allRead ? kSomeFailed : allMatched ? kDone : kUnmatched;
}

Json CoverageSchema() {
    return DocumentSchema<CoverageDocument>("coverage");
}

} // namespace zonstory

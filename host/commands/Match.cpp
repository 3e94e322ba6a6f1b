#include "commands/Match.h"

#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "commands/SaidScene.h"
#include "commands/Toolkit.h"
#include "output/Record.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

/// Scenes of a story under names that `write` finds them by.
class SceneNames {
public:
    explicit SceneNames(const SceneSelection& scenes) : mScenes(scenes) {}

    /// The number, or "#7" where that would not find the scene.
    std::string Name(std::size_t scene, const SceneNumbers& story) const {
        const std::string& number = story.Number(scene);
        try {
            if (!number.empty() && mScenes.Find(number).position == scene + 1) {
                return number;
            }
        } catch (const SceneSelectionError&) { // several scenes have the number
        }
        return fmt::format("#{}", scene + 1);
    }

private:
    const SceneSelection& mScenes;
};

std::string Sureness(const ClipMatch& match) {
    return std::string(Name(match.decision.evidence ? match.decision.evidence->confidence : Confidence::None));
}

std::string EvidenceText(const ClipMatch& match, const SceneNumbers& story) {
    return match.decision.evidence ? Explain(*match.decision.evidence, story) : "";
}

std::string SceneText(const ClipMatch& match, const SceneNumbers& story, const SceneNames& names) {
    return match.decision.scene ? names.Name(*match.decision.scene, story) : "";
}

std::vector<std::string> Candidates(const ClipMatch& match, const SceneNumbers& story, const SceneNames& names) {
    std::vector<std::string> candidates;
    for (const std::size_t scene : match.decision.between) {
        candidates.push_back(names.Name(scene, story));
    }
    return candidates;
}

std::vector<std::string> Dissent(const ClipMatch& match, const SceneNumbers& story) {
    std::vector<std::string> dissent;
    for (const Evidence& evidence : match.decision.disagreeing) {
        dissent.push_back(Explain(evidence, story));
    }
    return dissent;
}

std::string AsText(const ClipMatches& matches, const SceneNames& names) {
    Table table({{"clip", "clip"}, {"scene", "scene"}, {"take", "take"}, {"confidence", "sure"}, {"why", "why"}});
    for (const ClipMatch& match : matches.clips) {
        if (match.clip.refusal.empty()) {
            const bool matched = match.decision.scene.has_value();
            std::string why = matched ? EvidenceText(match, matches.story) : match.decision.reason;
            for (const std::string& dissent : Dissent(match, matches.story)) {
                why += "; but " + dissent;
            }
            table.AddRow({match.clip.path.string(), matched ? SceneText(match, matches.story, names) : "?",
                          match.decision.take, matched ? Sureness(match) : "", why});
        }
    }
    return table.AsText();
}

struct EvidenceRecord {
    std::string source;
    std::string text;
    std::string where;
    std::string rule;
    std::string said;
    std::string setUp;
    bool exact = false;
    std::string take;
    std::string confidence;
    std::vector<std::string> scenes;
};

struct LogRow {
    std::string where;
    Json fields;
};

struct MatchRecord {
    std::string clip;
    std::string verdict;
    std::optional<std::string> scene;
    std::optional<std::size_t> position;
    std::string take;
    std::string confidence;
    std::vector<std::string> candidates;
    std::string reason;
    std::optional<EvidenceRecord> evidence;
    std::vector<EvidenceRecord> disagreeing;
    std::vector<LogRow> log;
    std::string explained; ///< The evidence in words.
    std::vector<std::string> dissent;
};

struct MatchDocument {
    std::vector<MatchRecord> clips;
    std::vector<std::string> patterns; ///< "41 names like 12A-3: scene, set-up, take".
};

EvidenceRecord RecordOf(const Evidence& evidence, const SceneNumbers& story, const SceneNames& names) {
    std::vector<std::string> scenes;
    for (const std::size_t scene : evidence.scenes) {
        scenes.push_back(names.Name(scene, story));
    }
    return {std::string(Name(evidence.source)),
            evidence.text,
            evidence.where,
            std::string(Describe(evidence.rule)),
            evidence.said,
            evidence.setUp,
            evidence.fit == SceneNumbers::Fit::Exact,
            evidence.take,
            std::string(Name(evidence.confidence)),
            std::move(scenes)};
}

LogRow RecordOf(const std::vector<std::pair<std::string, std::string>>& fields) {
    Json columns = Json::object();
    for (std::size_t column = 1; column < fields.size(); ++column) {
        columns[ValidUTF8(fields[column].first)] = JsonString(fields[column].second);
    }
    return {fields.front().second, std::move(columns)};
}

MatchRecord RecordOf(const ClipMatch& match, const SceneNumbers& story, const SceneNames& names) {
    const Decision& decision = match.decision;
    MatchRecord record;
    record.clip = match.clip.path.string();
    record.verdict = Name(decision.verdict);
    if (decision.scene) {
        record.scene = names.Name(*decision.scene, story);
        record.position = *decision.scene + 1;
    }
    record.take = decision.take;
    record.confidence = Sureness(match);
    record.candidates = Candidates(match, story, names);
    record.reason = decision.reason;
    if (decision.evidence) {
        record.evidence = RecordOf(*decision.evidence, story, names);
    }
    for (const Evidence& evidence : decision.disagreeing) {
        record.disagreeing.push_back(RecordOf(evidence, story, names));
    }
    for (const auto& fields : match.logRows) {
        record.log.push_back(RecordOf(fields));
    }
    record.explained = EvidenceText(match, story);
    record.dissent = Dissent(match, story);
    return record;
}

MatchDocument DocumentOf(const ClipMatches& matches, const SceneNames& names) {
    MatchDocument document;
    for (const ClipMatch& match : matches.clips) {
        if (match.clip.refusal.empty()) {
            document.clips.push_back(RecordOf(match, matches.story, names));
        }
    }
    document.patterns = matches.patterns;
    return document;
}

} // namespace

template <>
const Fields<EvidenceRecord>& FieldsOf<EvidenceRecord>() {
    static const Fields<EvidenceRecord> fields = {
        {"source", nullptr, &EvidenceRecord::source},
        {"text", nullptr, &EvidenceRecord::text},
        {"where", nullptr, &EvidenceRecord::where},
        {"rule", nullptr, &EvidenceRecord::rule},
        {"said", nullptr, &EvidenceRecord::said},
        {"setUp", nullptr, &EvidenceRecord::setUp},
        {"exact", nullptr, &EvidenceRecord::exact},
        {"take", nullptr, &EvidenceRecord::take},
        {"confidence", nullptr, &EvidenceRecord::confidence},
        {"scenes", nullptr, &EvidenceRecord::scenes},
    };
    return fields;
}

template <>
const Fields<LogRow>& FieldsOf<LogRow>() {
    static const Fields<LogRow> fields = {{"where", nullptr, &LogRow::where}, {"fields", nullptr, &LogRow::fields}};
    return fields;
}

// In CSV the scene stands beside the clip, where `write --map` looks for it, and evidence is told in words.
template <>
const Fields<MatchRecord>& FieldsOf<MatchRecord>() {
    static const Fields<MatchRecord> fields = {
        {"clip", nullptr, &MatchRecord::clip},
        {"scene", nullptr, &MatchRecord::scene, Shown::InTables},
        {"take", nullptr, &MatchRecord::take, Shown::InTables},
        {"verdict", nullptr, &MatchRecord::verdict},
        {"scene", nullptr, &MatchRecord::scene, Shown::InJson},
        {"position", nullptr, &MatchRecord::position, Shown::InJson},
        {"take", nullptr, &MatchRecord::take, Shown::InJson},
        {"confidence", nullptr, &MatchRecord::confidence},
        {"source", nullptr, [](const MatchRecord& record) { return record.evidence ? record.evidence->source : ""; },
         Shown::InTables},
        {"evidence", nullptr, &MatchRecord::explained, Shown::InTables},
        {"candidates", nullptr, &MatchRecord::candidates, Shown::Everywhere, " "},
        {"reason", nullptr, &MatchRecord::reason},
        {"evidence", nullptr, &MatchRecord::evidence, Shown::InJson},
        {"disagreeing", nullptr, &MatchRecord::disagreeing, Shown::InJson},
        {"disagreeing", nullptr, &MatchRecord::dissent, Shown::InTables, "; "},
        {"log", nullptr, &MatchRecord::log, Shown::InJson},
    };
    return fields;
}

template <>
const Fields<MatchDocument>& FieldsOf<MatchDocument>() {
    static const Fields<MatchDocument> fields = {{"clips", nullptr, &MatchDocument::clips},
                                                 {"patterns", nullptr, &MatchDocument::patterns}};
    return fields;
}

namespace {

std::string AsFormat(Format format, const ClipMatches& matches, const SceneNames& names) {
    return InFormat(
        format, [&] { return AsText(matches, names); },
        [&] { return DocumentText("match", DocumentOf(matches, names)); },
        [&] { return RecordTable(DocumentOf(matches, names).clips).AsCsv(); });
}

} // namespace

int RunMatch(const MatchOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const SceneSelection scenes(*story.root);
    const Toolkit toolkit;
    SceneRules rules;
    const ClipMatches matches = MatchClips(scenes, SelectClips(options.clips, options.recursive), options.match,
                                           rules.In(options.clip), output);
    for (const ClipMatch& match : matches.clips) {
        if (!match.clip.refusal.empty()) {
            output.Error(match.clip.path.string() + ": " + match.clip.refusal);
        }
    }
    output.Result(AsFormat(options.format, matches, SceneNames(scenes)));
    for (const std::string& pattern : matches.patterns) {
        output.Note(SafeLine(pattern));
    }
    output.Note(Summary(matches));
    return ExitCodeOf(matches);
}

Json MatchSchema() {
    return DocumentSchema<MatchDocument>("match");
}

} // namespace zonstory

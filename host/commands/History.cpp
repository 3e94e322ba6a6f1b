#include "commands/History.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "commands/TargetWord.h"
#include "files/FileError.h"
#include "journal/Journal.h"
#include "output/ExitCode.h"
#include "output/Record.h"
#include "output/SafeText.h"

namespace zonstory {

namespace fs = std::filesystem;

namespace {

struct HistoryRun {
    RunFacts facts;
    std::size_t changes = 0; ///< That were made, undone ones as well.
    std::size_t undone = 0;
};

struct HistoryChange {
    RunFacts run;
    ChangeFacts facts;
    ChangeState state = ChangeState::Unknown;
    std::string clip; ///< As the next, from where the journal's name leads.
    std::string file;
};

struct HistoryDocument {
    std::vector<HistoryRun> runs;
};

struct ClipHistoryDocument {
    std::vector<HistoryChange> changes;
};

std::optional<std::string> UnlessEmpty(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

const char* UndoneWord(const HistoryRun& run) {
    if (run.undone == 0) {
        return "no";
    }
    return run.undone == run.changes ? "yes" : "partly";
}

const char* StateWord(ChangeState state) {
    switch (state) {
    case ChangeState::Made:
        return "made";
    case ChangeState::NotMade:
        return "not made";
    case ChangeState::Undone:
        return "undone";
    case ChangeState::Unknown:
        break;
    }
    return "unknown";
}

ChangeState StateOf(const Journal& journal, const RecordedChange& change) {
    try {
        return journal.StateOf(change);
    } catch (const FileError&) {
        return ChangeState::Unknown;
    }
}

std::string ValueText(const std::optional<std::string>& value) {
    return value ? '"' + *value + '"' : "none";
}

std::vector<std::string> Values(const HistoryChange& change) {
    std::vector<std::string> values;
    values.reserve(change.facts.properties.size());
    for (const PropertyChange& property : change.facts.properties) {
        values.push_back(property.path + ": " + ValueText(property.before) + " -> " + ValueText(property.after));
    }
    return values;
}

HistoryDocument RunsIn(const Journal& journal) {
    HistoryDocument document;
    for (const RecordedRun& run : journal.Runs()) {
        HistoryRun told{run.facts, 0, 0};
        for (const RecordedChange& change : run.changes) {
            const ChangeState state = StateOf(journal, change);
            told.changes += state == ChangeState::NotMade ? 0U : 1U;
            told.undone += state == ChangeState::Undone ? 1U : 0U;
        }
        if (told.changes > 0) {
            document.runs.push_back(std::move(told));
        }
    }
    return document;
}

/// Tells a clip's changes from others', whose names lead elsewhere.
class ClipName {
public:
    explicit ClipName(const fs::path& clip) : mWhole(Whole(clip)) {}

    bool Is(const fs::path& file) const { return file.filename() == mWhole.filename() && Whole(file) == mWhole; }

private:
    static fs::path Whole(const fs::path& path) {
        std::error_code ignored;
        return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
    }

    fs::path mWhole;
};

ClipHistoryDocument ChangesOf(const fs::path& clip, const Journal& journal) {
    const ClipName wanted(clip);
    ClipHistoryDocument document;
    for (const RecordedRun& run : journal.Runs()) {
        for (const RecordedChange& change : run.changes) {
            const fs::path folder = journal.FolderOf(change);
            if (wanted.Is(folder / change.facts.clip) || wanted.Is(folder / change.facts.file)) {
                document.changes.push_back({run.facts, journal.Whole(change), StateOf(journal, change),
                                            folder / change.facts.clip, folder / change.facts.file});
            }
        }
    }
    return document;
}

std::string AsText(const ClipHistoryDocument& document) {
    std::string text;
    for (const HistoryChange& change : document.changes) {
        std::string line = fmt::format("{}  {}  {}", change.facts.time, change.run.id, change.run.verb);
        for (const std::string& part :
             {change.run.story, change.facts.scene.empty() ? "" : "scene " + change.facts.scene,
              change.facts.target == Target::Sidecar ? "sidecar " + change.file : "",
              std::string(StateWord(change.state))}) {
            line += part.empty() ? "" : ", " + part;
        }
        text += SafeLine(line) + '\n';
        for (const std::string& value : Values(change)) {
            text += "  " + SafeLine(value) + '\n';
        }
    }
    return text;
}

} // namespace

template <>
const Fields<HistoryRun>& FieldsOf<HistoryRun>() {
    static const Fields<HistoryRun> fields = {
        {"time", "when", [](const HistoryRun& run) { return run.facts.time; }},
        {"run", "run", [](const HistoryRun& run) { return run.facts.id; }},
        {"host", "host", [](const HistoryRun& run) { return run.facts.host; }},
        {"program", nullptr, [](const HistoryRun& run) { return run.facts.program; }, Shown::InJson},
        {"verb", "verb", [](const HistoryRun& run) { return run.facts.verb; }},
        {"story", "story", [](const HistoryRun& run) { return run.facts.story; }},
        {"digest", nullptr, [](const HistoryRun& run) { return run.facts.digest; }, Shown::InJson},
        {"changes", "changes", &HistoryRun::changes},
        {"undone", "undone", UndoneWord},
        Field<HistoryRun>("undoes", "undoes", [](const HistoryRun& run) { return UnlessEmpty(run.facts.undoes); })
            .WhereTold(),
    };
    return fields;
}

template <>
const Fields<HistoryDocument>& FieldsOf<HistoryDocument>() {
    static const Fields<HistoryDocument> fields = {{"runs", nullptr, &HistoryDocument::runs}};
    return fields;
}

template <>
const Fields<PropertyChange>& FieldsOf<PropertyChange>() {
    static const Fields<PropertyChange> fields = {{"path", nullptr, &PropertyChange::path},
                                                  {"before", nullptr, &PropertyChange::before},
                                                  {"after", nullptr, &PropertyChange::after}};
    return fields;
}

template <>
const Fields<HistoryChange>& FieldsOf<HistoryChange>() {
    static const Fields<HistoryChange> fields = {
        {"time", nullptr, [](const HistoryChange& change) { return change.facts.time; }},
        {"run", nullptr, [](const HistoryChange& change) { return change.run.id; }},
        {"host", nullptr, [](const HistoryChange& change) { return change.run.host; }},
        {"verb", nullptr, [](const HistoryChange& change) { return change.run.verb; }},
        {"story", nullptr, [](const HistoryChange& change) { return change.run.story; }},
        {"scene", nullptr, [](const HistoryChange& change) { return change.facts.scene; }},
        {"state", nullptr, [](const HistoryChange& change) { return StateWord(change.state); }},
        {"clip", nullptr, &HistoryChange::clip},
        {"target", nullptr, [](const HistoryChange& change) { return TargetWord(change.facts.target); }},
        {"file", nullptr, &HistoryChange::file},
        {"sizeBefore", nullptr, [](const HistoryChange& change) { return change.facts.back.sizeAfter; }},
        {"sizeAfter", nullptr, [](const HistoryChange& change) { return change.facts.back.sizeBefore; }},
        {"checksumBefore", nullptr, [](const HistoryChange& change) { return change.facts.back.checksumAfter; }},
        {"checksumAfter", nullptr, [](const HistoryChange& change) { return change.facts.back.checksumBefore; }},
        {"values", nullptr, [](const HistoryChange& change) { return change.facts.properties; }, Shown::InJson},
        {"values", nullptr, Values, Shown::InTables, "\n"},
    };
    return fields;
}

template <>
const Fields<ClipHistoryDocument>& FieldsOf<ClipHistoryDocument>() {
    static const Fields<ClipHistoryDocument> fields = {{"changes", nullptr, &ClipHistoryDocument::changes}};
    return fields;
}

int RunHistory(const HistoryOptions& options, Output& output) {
    const Journal journal(JournalNamed(options.journal));
    for (const std::string& problem : journal.Problems()) {
        output.Warning(problem);
    }
    if (options.clip.empty()) {
        const HistoryDocument document = RunsIn(journal);
        output.Result(InFormat(
            options.format, [&] { return RecordTable(document.runs).AsText(); },
            [&] { return DocumentText("history", document); }, [&] { return RecordTable(document.runs).AsCsv(); }));
        return kDone;
    }
    const ClipHistoryDocument document = ChangesOf(options.clip, journal);
    output.Result(InFormat(
        options.format, [&] { return AsText(document); }, [&] { return DocumentText("clip-history", document); },
        [&] { return RecordTable(document.changes).AsCsv(); }));
    return kDone;
}

Json HistorySchema() {
    return DocumentSchema<HistoryDocument>("history");
}

Json ClipHistorySchema() {
    return DocumentSchema<ClipHistoryDocument>("clip-history");
}

} // namespace zonstory

#include "commands/RowMatching.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "match/LogIndex.h"
#include "match/NamePatterns.h"
#include "match/NameRuns.h"

namespace zonstory {

namespace {

using Statements = std::vector<Statement>;

struct Row {
    const ClipLog* log = nullptr;
    const ClipLog::Row* row = nullptr;
    std::string file;  ///< With its folder; or the clip's name, where no file is told.
    std::string clip;  ///< Its name beside that of its file.
    Statements fields; ///< What logs and clips say.
    Statements names;
};

std::string FileOfRow(const ClipLog& log, const ClipLog::Row& row) {
    const std::string_view folder = log.Field(row, log.known.folder);
    const std::string_view file = log.Field(row, log.known.file);
    const bool isAlone = !file.empty() && !folder.empty() && file.find_first_of("/\\") == std::string_view::npos;
    return isAlone ? fmt::format("{}/{}", folder, file) : std::string(file);
}

Row MakeRow(const ClipLog& log, const ClipLog::Row& row, SlateStyle slates) {
    Row made = {&log, &row, FileOfRow(log, row), std::string(log.Field(row, log.known.clip)), {}, {}};
    const bool isNamed = !made.file.empty() || !made.clip.empty();
    made.clip = AreDigits(made.clip) ? "" : made.clip;
    if (made.file.empty()) {
        made.file = std::exchange(made.clip, "");
    }
    if (made.file.empty()) {
        made.file = log.Field(row, log.known.sound);
    }
    const bool isSlate = log.known.slatesAreScenes && slates == SlateStyle::Continuous;
    const std::string_view scene = log.Field(row, log.known.scene);
    if (!scene.empty() && !isSlate) {
        Statement statement = StateField(Source::Log, scene, log.Field(row, log.known.take));
        statement.where = log.Where(row);
        statement.ceiling = isNamed && !log.known.slatesAreScenes ? Confidence::Certain : Confidence::High;
        made.fields.push_back(std::move(statement));
    }
    return made;
}

void Append(Statements& statements, Statements more) {
    std::move(more.begin(), more.end(), std::back_inserter(statements));
}

// What other logs say of the clips that the rows name; several rows may name one.
void AddOtherLogs(std::vector<Row>& rows, const MatchSettings& settings, Output& output) {
    const std::vector<ClipLog> logs = ReadLogFiles(settings);
    std::vector<std::string> files;
    std::unordered_map<std::string, std::size_t> places;
    for (const Row& row : rows) {
        if (!row.file.empty() && places.try_emplace(row.file, files.size()).second) {
            files.push_back(row.file);
        }
    }
    const LogIndex index(logs, files, settings.slates);
    for (const std::string& problem : index.Problems()) {
        output.Warning(problem);
    }
    for (Row& row : rows) {
        if (!row.file.empty()) {
            Append(row.fields, index.Statements(places.at(row.file)));
        }
    }
}

// The same log, each row of which is looked for, whether it names a scene or not.
ClipLog AskingForAll(ClipLog log) {
    log.known.scene = log.columns.size();
    log.known.slatesAreScenes = false;
    for (ClipLog::Row& row : log.rows) {
        std::string file = FileOfRow(log, row);
        row.fields.resize(log.columns.size());
        if (log.known.file) {
            row.fields[*log.known.file] = std::move(file);
        }
        row.fields.emplace_back("any");
    }
    return log;
}

// What the clips that the rows are about say, and where they are.
void AddClips(std::vector<Row>& rows, const std::vector<const ClipLog*>& logs, const std::vector<SelectedClip>& clips,
              const MatchSettings& settings, const ClipOptions& options, Output& output) {
    const std::vector<std::string> paths = AbsolutePaths(clips);
    const std::vector<Statements> said = GatherClipStatements(clips, options, output);
    std::size_t first = 0; // of the log's rows
    std::size_t without = 0;
    for (const ClipLog* const log : logs) {
        const std::vector<ClipLog> asking = {AskingForAll(*log)};
        const LogIndex index(asking, paths, settings.slates);
        for (const std::string& problem : index.Problems()) {
            output.Warning(problem);
        }
        without += index.RowsWithoutClip();
        for (std::size_t clip = 0; clip < clips.size(); ++clip) {
            for (const LogIndex::RowOfLog& found : index.Rows(clip)) {
                Row& row = rows[first + static_cast<std::size_t>(found.row - asking.front().rows.data())];
                row.file = paths[clip];
                Append(row.fields, said[clip]);
            }
        }
        first += log->rows.size();
    }
    output.Note(fmt::format("rows that name none of the clips: {}", without));
}

// What the rows' files or clips are called, read together.
std::vector<std::string> AddNames(std::vector<Row>& rows, std::string Row::*name, const SceneNumbers& story,
                                  const MatchSettings& settings, Output& output) {
    std::vector<Row*> named;
    std::vector<std::string> texts;
    std::vector<Statements> known;
    for (Row& row : rows) {
        if (!(row.*name).empty()) {
            named.push_back(&row);
            texts.push_back(row.*name);
            std::replace(texts.back().begin(), texts.back().end(), '\\', '/');
            known.push_back(row.fields);
        }
    }
    const NamePatterns names(texts, known, story, {settings.slates, settings.pattern});
    for (std::size_t at = 0; at < named.size(); ++at) {
        Append(named[at]->names, names.Statements(at));
    }
    for (const std::size_t odd : names.OddOnes()) {
        output.Warning(fmt::format("{}: {} is called unlike all others around it",
                                   named[odd]->log->Where(*named[odd]->row), named[odd]->*name));
    }
    return names.Lines();
}

} // namespace

RowMatches MatchRows(const SceneNumbers& story, const std::vector<const ClipLog*>& logs,
                     const std::vector<SelectedClip>& clips, const MatchSettings& settings, const ClipOptions& options,
                     Output& output) {
    std::vector<Row> rows;
    for (const ClipLog* const log : logs) {
        for (const ClipLog::Row& row : log->rows) {
            rows.push_back(MakeRow(*log, row, settings.slates));
        }
    }
    if (!settings.logs.empty()) {
        AddOtherLogs(rows, settings, output);
    }
    if (!clips.empty()) {
        AddClips(rows, logs, clips, settings, options, output);
    }
    RowMatches matches;
    matches.patterns = AddNames(rows, &Row::file, story, settings, output);
    for (std::string& pattern : AddNames(rows, &Row::clip, story, settings, output)) {
        matches.patterns.push_back(std::move(pattern));
    }
    auto row = rows.begin();
    for (const ClipLog* const log : logs) {
        std::vector<Decision>& decisions = matches.decisions.emplace_back();
        decisions.reserve(log->rows.size());
        for (std::size_t count = log->rows.size(); count > 0; --count, ++row) {
            Append(row->fields, std::move(row->names));
            decisions.push_back(Decide(row->fields, story, settings.bar));
        }
    }
    return matches;
}

std::string ClipOfRow(const ClipLog& log, const ClipLog::Row& row) {
    std::string name = FileOfRow(log, row);
    for (const auto& column : {log.known.clip, log.known.sound}) {
        name = name.empty() ? std::string(log.Field(row, column)) : name;
    }
    return name;
}

} // namespace zonstory

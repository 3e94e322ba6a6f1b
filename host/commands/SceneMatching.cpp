#include "commands/SceneMatching.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <thread>

#include <fmt/format.h>

#include "commands/InOrder.h"
#include "commands/SceneEvidence.h"
#include "files/ReadFile.h"
#include "match/LogIndex.h"
#include "match/NamePatterns.h"
#include "output/CsvReader.h"
#include "output/ExitCode.h"

namespace zonstory {

namespace {

ClipLog ReadLogFile(const std::string& path, const GivenColumns& columns) try {
    return ReadClipLog(ReadFile(path), path, columns);
} catch (const FileError& error) {
    throw CsvError(path, 0, error.what());
}

std::vector<std::pair<std::string, std::string>> AllFields(const LogIndex::RowOfLog& source) {
    std::vector<std::pair<std::string, std::string>> fields = {{"", source.log->Where(*source.row)}};
    for (std::size_t column = 0; column < source.log->columns.size(); ++column) {
        fields.emplace_back(source.log->columns[column], source.log->Field(*source.row, column));
    }
    return fields;
}

void WarnOfLogs(const LogIndex& index, Output& output) {
    for (const std::string& problem : index.Problems()) {
        output.Warning(problem);
    }
    if (index.RowsWithoutClip() > 0) {
        output.Note(fmt::format("log rows that name a scene and none of these clips: {}", index.RowsWithoutClip()));
    }
}

// On any thread.
SceneEvidence Gather(const SelectedClip& clip, const ClipOptions& options) {
    SceneEvidence evidence;
    try {
        if (clip.refusal.empty()) {
            evidence = GatherEvidence(clip.path, options);
        }
    } catch (const std::exception& error) {
        evidence.problem = error.what();
    }
    return evidence;
}

std::size_t Count(const ClipMatches& matches, Verdict verdict) {
    const auto has = [verdict](const ClipMatch& match) {
        return match.clip.refusal.empty() && match.decision.verdict == verdict;
    };
    return static_cast<std::size_t>(std::count_if(matches.clips.begin(), matches.clips.end(), has));
}

std::size_t CountRefused(const ClipMatches& matches) {
    const auto isRefused = [](const ClipMatch& match) { return !match.clip.refusal.empty(); };
    return static_cast<std::size_t>(std::count_if(matches.clips.begin(), matches.clips.end(), isRefused));
}

} // namespace

SceneNumbers NumbersOf(const SceneSelection& scenes) {
    std::vector<std::string> numbers;
    for (const SelectedScene& scene : scenes.All()) {
        numbers.push_back(zoncore::UTF16to8(scene.scene->sceneNumber));
    }
    return SceneNumbers(std::move(numbers));
}

std::vector<ClipLog> ReadLogFiles(const MatchSettings& settings) {
    std::vector<ClipLog> logs;
    logs.reserve(settings.logs.size());
    std::transform(settings.logs.begin(), settings.logs.end(), std::back_inserter(logs),
                   [&](const std::string& path) { return ReadLogFile(path, settings.columns); });
    return logs;
}

std::vector<std::string> AbsolutePaths(const std::vector<SelectedClip>& clips) {
    std::vector<std::string> paths;
    paths.reserve(clips.size());
    for (const SelectedClip& clip : clips) {
        std::error_code ignored;
        paths.push_back(std::filesystem::absolute(clip.path, ignored).lexically_normal().string());
    }
    return paths;
}

std::vector<std::vector<Statement>> GatherClipStatements(const std::vector<SelectedClip>& clips,
                                                         const ClipOptions& options, Output& output) {
    std::vector<std::vector<Statement>> statements(clips.size());
    const auto gather = [&](std::size_t at) { return Gather(clips[at], options); };
    const auto add = [&](std::size_t at, SceneEvidence evidence) {
        if (!evidence.problem.empty()) {
            output.Warning(clips[at].path.string() + ": " + evidence.problem);
        }
        statements[at] = std::move(evidence.statements);
        output.Progress(fmt::format("{} of {} clips", at + 1, clips.size()));
    };
    ComputeInOrder<SceneEvidence>(clips.size(), std::thread::hardware_concurrency(), gather, add);
    output.EndProgress();
    return statements;
}

ClipMatches MatchClips(const SceneSelection& scenes, std::vector<SelectedClip> clips, const MatchSettings& settings,
                       const ClipOptions& options, Output& output) {
    const std::vector<ClipLog> logs = ReadLogFiles(settings);
    const std::vector<std::string> paths = AbsolutePaths(clips);
    const LogIndex index(logs, paths, settings.slates);
    WarnOfLogs(index, output);
    ClipMatches matches = {NumbersOf(scenes), {}, {}};
    std::vector<std::vector<Statement>> fields = GatherClipStatements(clips, options, output);
    for (std::size_t at = 0; at < clips.size(); ++at) {
        const std::vector<Statement> logged = index.Statements(at);
        fields[at].insert(fields[at].begin(), logged.begin(), logged.end());
    }
    const NamePatterns names(paths, fields, matches.story, {settings.slates, settings.pattern});
    matches.patterns = names.Lines();
    for (const std::size_t odd : names.OddOnes()) {
        output.Warning(clips[odd].path.string() + ": is called unlike all others around it");
    }
    for (std::size_t at = 0; at < clips.size(); ++at) {
        ClipMatch match;
        match.clip = std::move(clips[at]);
        if (match.clip.refusal.empty()) {
            std::vector<Statement> statements = std::move(fields[at]);
            const std::vector<Statement> more = names.Statements(at);
            statements.insert(statements.end(), more.begin(), more.end());
            match.decision = Decide(statements, matches.story, settings.bar);
            for (const LogIndex::RowOfLog& source : index.Rows(at)) {
                match.logRows.push_back(AllFields(source));
            }
        }
        matches.clips.push_back(std::move(match));
    }
    return matches;
}

std::string Summary(const ClipMatches& matches) {
    return fmt::format("{} matched, {} ambiguous, {} unmatched, {} failed", Count(matches, Verdict::Matched),
                       Count(matches, Verdict::Ambiguous), Count(matches, Verdict::Unmatched), CountRefused(matches));
}

int ExitCodeOf(const ClipMatches& matches) {
    if (CountRefused(matches) > 0) {
        return kSomeFailed;
    }
    return Count(matches, Verdict::Matched) == matches.clips.size() ? kDone : kUnmatched;
}

} // namespace zonstory

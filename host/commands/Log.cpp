#include "commands/Log.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "commands/LogFile.h"
#include "commands/LogReport.h"
#include "commands/RowMatching.h"
#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "files/ReadFile.h"
#include "output/ExitCode.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

// ---- Where the logs go ------------------------------------------------------------------------------------------------

bool IsSameFile(const std::string& left, const std::string& right) {
    std::error_code error; // of a file that is not there
    return fs::equivalent(left, right, error);
}

bool IsFolderWanted(const LogOptions& options) {
    std::error_code error;
    return !options.target.empty() &&
           (options.files.size() > 1 || options.target.back() == '/' || fs::is_directory(options.target, error));
}

std::string TargetOf(const std::string& file, const LogOptions& options) {
    return options.target.empty()    ? file
           : IsFolderWanted(options) ? (fs::path(options.target) / fs::path(file).filename()).string()
                                     : options.target;
}

void RequireFreeTarget(const std::string& file, const std::string& target, const LogOptions& options) {
    std::vector<std::string> taken = options.files;
    taken.insert(taken.end(), options.match.logs.begin(), options.match.logs.end());
    taken.push_back(options.story.path);
    for (const std::string& other : taken) {
        if (IsSameFile(other, target) && !(options.inPlace && other == file)) {
            throw UsageError(target +
                             (other == file ? ": is the log itself; --in-place allows that" : ": is read, too"));
        }
    }
}

void CheckUsage(const LogOptions& options) {
    if (options.dryRun) {
        return;
    }
    if (options.target.empty() && !options.inPlace) {
        throw UsageError("zonstory: log needs -o FILE or --in-place");
    }
    std::set<std::string> targets;
    for (const std::string& file : options.files) {
        const std::string target = TargetOf(file, options);
        if (target == "-") {
            throw UsageError("zonstory: a log from standard input needs -o FILE");
        }
        RequireFreeTarget(file, target, options);
        std::error_code ignored;
        if (!targets.insert(fs::weakly_canonical(target, ignored).string()).second) {
            throw UsageError(target + ": several logs would become this file");
        }
    }
}

// ---- What rows are to say ---------------------------------------------------------------------------------------------

// Knows what the scenes say, each gathered when it is first asked for.
class Script {
public:
    explicit Script(const SceneSelection& scenes) : mScenes(scenes.All()), mStory(NumbersOf(scenes)) {}

    const SceneNumbers& Numbers() const { return mStory; }

    RowWords WordsFor(const std::vector<Decision>& decisions) {
        return {[this, &decisions](std::size_t row, LogField field, std::string_view current) {
                    return decisions[row].scene ? Text(decisions[row], field, current) : std::string();
                },
                [this, &decisions](std::size_t row, LogField field) {
                    return decisions[row].scene ? Words(*decisions[row].scene).Keywords(field)
                                                : std::vector<std::string>();
                }};
    }

private:
    const SceneWords& Words(std::size_t scene) {
        return mWords.try_emplace(scene, *mScenes[scene].scene).first->second;
    }

    const std::string& Said(std::size_t scene, LogField field) {
        const auto [text, isNew] = mTexts.try_emplace({scene, field});
        if (isNew) {
            text->second = Words(scene).Text(field);
        }
        return text->second;
    }

    // On purpose: "12A" in a log stays where the story's scene is 12, because it is the same scene and says the set-up.
    bool Agrees(std::string_view current, std::size_t scene) const {
        return !current.empty() &&
               Decide({StateField(Source::Log, current, "")}, mStory, Confidence::Low).scene == scene;
    }

    std::string Text(const Decision& decision, LogField field, std::string_view current) {
        const std::size_t scene = *decision.scene;
        switch (field) {
        case LogField::Scene:
            return Agrees(current, scene) ? "" : mStory.Number(scene);
        case LogField::Shot:
            return decision.evidence ? decision.evidence->setUp : "";
        case LogField::Take:
            return CanonicalSceneNumber(current) == CanonicalSceneNumber(decision.take) ? "" : decision.take;
        default:
            return Said(scene, field);
        }
    }

    std::vector<SelectedScene> mScenes;
    SceneNumbers mStory;
    std::map<std::size_t, SceneWords> mWords;
    std::map<std::pair<std::size_t, LogField>, std::string> mTexts;
};

// A log in its own place is written when it changes, and when nobody else has changed it since it was read.
void WriteLog(const LogFile& log, const std::string& target, const Filling& filling) {
    if (IsSameFile(target, log.Path())) {
        if (filling.edits.empty()) {
            return;
        }
        if (ReadFile(target) != log.Bytes()) {
            throw OutputError(target + ": was changed by somebody else meanwhile");
        }
    } else if (fs::path(target).has_parent_path()) {
        fs::create_directories(fs::path(target).parent_path());
    }
    WriteFileAtomically(target, ApplyEdits(log.Bytes(), filling.edits));
}

// Whether the log is where it was to go, which the summary then says.
bool TryToWriteLog(const LogFile& log, const Filling& filling, const LogOptions& options, LogSummary& summary,
                   Output& output) {
    if (options.dryRun) {
        return true;
    }
    try {
        const std::string target = TargetOf(log.Path(), options);
        WriteLog(log, target, filling);
        summary.target = target;
        return true;
    } catch (const std::exception& error) { // the others are written all the same
        output.Error(error.what());
        return false;
    }
}

std::vector<LogFile> ReadLogs(const LogOptions& options) {
    std::vector<LogFile> logs;
    logs.reserve(options.files.size());
    for (const std::string& file : options.files) {
        logs.emplace_back(file, options.match.columns);
    }
    return logs;
}

std::vector<SelectedClip> SelectFitClips(const LogOptions& options, bool& areAllFit, Output& output) {
    std::vector<SelectedClip> clips = SelectClips(options.clips, options.recursive);
    for (const SelectedClip& clip : clips) {
        if (!clip.refusal.empty()) {
            output.Error(clip.path.string() + ": " + clip.refusal);
            areAllFit = false;
        }
    }
    std::erase_if(clips, [](const SelectedClip& clip) { return !clip.refusal.empty(); });
    return clips;
}

RowMatches MatchLogs(const std::vector<LogFile>& logs, const SceneNumbers& story, const LogOptions& options,
                     bool& areAllFit, Output& output) {
    const Toolkit toolkit;
    std::vector<const ClipLog*> rows;
    rows.reserve(logs.size());
    for (const LogFile& log : logs) {
        rows.push_back(&log.Rows());
    }
    return MatchRows(story, rows, SelectFitClips(options, areAllFit, output), options.match, options.clip, output);
}

// All of them before one is written: a column that two fields want is found out here.
std::vector<Filling> FillLogs(const std::vector<LogFile>& logs, Script& script, const RowMatches& matches,
                              const LogOptions& options) {
    std::vector<Filling> fillings;
    fillings.reserve(logs.size());
    for (std::size_t at = 0; at < logs.size(); ++at) {
        fillings.push_back(logs[at].Fill(options.fills, script.WordsFor(matches.decisions[at]), options.replace));
    }
    return fillings;
}

void Print(const LogDocument& document, const LogOptions& options, const RowMatches& matches, Output& output) {
    output.Result(InFormat(
        options.format, [&] { return AsText(document); }, [&] { return DocumentText("log", document); },
        [&] { return RecordTable(document.entries).AsCsv(); }));
    for (const std::string& pattern : matches.patterns) {
        output.Note(pattern);
    }
    for (const LogSummary& log : document.files) {
        output.Note(AsLine(log));
    }
}

int ExitCodeOf(const LogDocument& document, bool allDone) {
    bool isUnsure = false;
    for (const LogSummary& log : document.files) {
        allDone = allDone && log.unwritable == 0;
        isUnsure = isUnsure || log.unsure > 0;
    }
    return !allDone ? kSomeFailed : isUnsure ? kUnmatched : kDone;
}

} // namespace

int RunLog(const LogOptions& options, Output& output) {
    CheckUsage(options);
    const Story story = ReadStory(options.story);
    Script script(SceneSelection(*story.root));
    const std::vector<LogFile> logs = ReadLogs(options);
    bool allDone = true;
    const RowMatches matches = MatchLogs(logs, script.Numbers(), options, allDone, output);
    const std::vector<Filling> fillings = FillLogs(logs, script, matches, options);
    // In text, what was done needs no eye, and what was not done does.
    const Told told = options.dryRun || options.format != Format::Text ? Told::Everything : Told::WhatStayed;
    LogDocument document;
    for (std::size_t at = 0; at < logs.size(); ++at) {
        for (const std::string& note : fillings[at].notes) {
            output.Warning(logs[at].Path() + ": " + note);
        }
        LogSummary& summary = document.files.emplace_back(Summarize(logs[at], matches.decisions[at], fillings[at]));
        allDone = TryToWriteLog(logs[at], fillings[at], options, summary, output) && allDone;
        AddEntries(logs[at], matches.decisions[at], fillings[at], options.fills, script.Numbers(), told,
                   document.entries);
    }
    Print(document, options, matches, output);
    return ExitCodeOf(document, allDone);
}

Json LogSchema() {
    return DocumentSchema<LogDocument>("log");
}

} // namespace zonstory

#include "commands/Undo.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "files/FileError.h"
#include "journal/Journal.h"
#include "output/ExitCode.h"

namespace zonstory {

namespace {

constexpr BatchWords kWords = {"restored", "would be restored"};
constexpr const char* kVerb = "undo";

// What cannot be found out now is tried, so that it fails under its clip's name.
bool IsToUndo(const Journal& journal, const RecordedChange& change) {
    try {
        const ChangeState state = journal.StateOf(change);
        return state == ChangeState::Made || state == ChangeState::Unknown;
    } catch (const FileError&) {
        return true;
    }
}

bool HasToUndo(const Journal& journal, const RecordedRun& run) {
    return run.facts.verb != kVerb &&
           std::any_of(run.changes.begin(), run.changes.end(),
                       [&](const RecordedChange& change) { return IsToUndo(journal, change); });
}

const RecordedRun& RunWithId(const Journal& journal, const std::string& beginning) {
    const RecordedRun* found = nullptr;
    for (const RecordedRun& run : journal.Runs()) {
        if (run.facts.id.starts_with(beginning)) {
            if (found != nullptr) {
                throw UsageError(fmt::format("zonstory: more than one run is called {}...", beginning));
            }
            found = &run;
        }
    }
    if (found == nullptr) {
        throw UsageError(fmt::format("zonstory: the journal has no run {}; 'zonstory history' lists them", beginning));
    }
    if (found->facts.verb == kVerb) {
        throw UsageError(fmt::format("zonstory: {} is an undo itself; write again instead", found->facts.id));
    }
    return *found;
}

const RecordedRun* Choose(const Journal& journal, const std::string& id) {
    if (!id.empty()) {
        return &RunWithId(journal, id);
    }
    const auto last = std::find_if(journal.Runs().rbegin(), journal.Runs().rend(),
                                   [&](const RecordedRun& run) { return HasToUndo(journal, run); });
    return last == journal.Runs().rend() ? nullptr : &*last;
}

// A journal that came with a disk may name any file of this machine; what lies on the disk is its own.
std::string Refusal(const std::filesystem::path& file, const std::filesystem::path& folder) {
    return IsBeneath(file, folder.empty() ? "." : folder)
               ? std::string()
               : "does not lie beneath the folder of the journal; --outside takes the journal's word for it";
}

ClipTask MakeTask(const Journal& journal, const RunFacts& run, const RecordedChange& change, bool mayBeAnywhere) {
    const std::filesystem::path folder = journal.FolderOf(change);
    ClipTask task;
    const std::filesystem::path file = folder / change.facts.file;
    task.clip = folder / change.facts.clip;
    task.refusal = mayBeAnywhere ? std::string() : Refusal(file, folder);
    task.undoing = {{run.id, change.facts.number}, file, [&journal, &change] { return journal.Whole(change); }};
    return task;
}

std::vector<ClipTask> TasksFor(const Journal& journal, const RecordedRun& run, bool mayBeAnywhere) {
    std::vector<ClipTask> tasks;
    for (const RecordedChange& change : run.changes) {
        if (IsToUndo(journal, change)) {
            tasks.push_back(MakeTask(journal, run.facts, change, mayBeAnywhere));
        }
    }
    std::sort(tasks.begin(), tasks.end(),
              [](const ClipTask& left, const ClipTask& right) { return left.clip < right.clip; });
    return tasks;
}

std::string Describe(const RunFacts& run) {
    return fmt::format("takes back run {} of {} on {}: {}{}", run.id, run.time, run.host, run.verb,
                       run.story.empty() ? "" : ' ' + run.story);
}

} // namespace

int RunUndo(const UndoOptions& options, Output& output) {
    const Toolkit toolkit;
    const JournalPlace place = JournalNamed(options.journal);
    const Journal journal(place);
    for (const std::string& problem : journal.Problems()) {
        output.Warning(problem);
    }
    const RecordedRun* const run = Choose(journal, options.run);
    if (run == nullptr) {
        output.Note(place.path.string() + ": has no run that could be undone");
        return kDone;
    }
    output.Note(Describe(run->facts));
    BatchOptions batch = options.batch;
    batch.journal.place = options.journal;
    RunFacts facts;
    facts.verb = kVerb;
    facts.undoes = run->facts.id;
    return RunBatch(TasksFor(journal, *run, place.isOwn || options.isOutside), batch, kWords, std::move(facts), output);
}

} // namespace zonstory

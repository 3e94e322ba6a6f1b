#include "commands/ClipBatch.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <mutex>
#include <numeric>
#include <thread>
#include <utility>

#include <fmt/format.h>

#include "clip/CountedBytes.h"
#include "clip/Interrupt.h"
#include "commands/BatchProgress.h"
#include "commands/ClipReport.h"
#include "commands/InOrder.h"
#include "commands/InterruptSignals.h"
#include "commands/SceneSync.h"
#include "journal/JournalWriter.h"
#include "journal/JournaledClip.h"
#include "output/ExitCode.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

ClipResult ResultOf(Outcome outcome) {
    switch (outcome) {
    case Outcome::Written:
        return ClipResult::Done;
    case Outcome::WouldWrite:
        return ClipResult::Would;
    case Outcome::Unchanged:
        break;
    }
    return ClipResult::Unchanged;
}

/// How clips are worked on: what does not change from one to the next.
struct Work {
    const ClipOptions& options;
    KeptFolder& kept;
    JournalWriter* journal; ///< Null where none is kept.
};

// A file that has its earlier bytes already, as after an undo that was killed, is done.
UpdateResult TakeBack(const ClipTask::Undoing& undoing, const ClipOptions& options, const Work& work) {
    const ChangeFacts facts = undoing.facts();
    if (IsEdited(undoing.file, facts.back)) {
        if (work.journal != nullptr) {
            work.journal->FoundAsBefore(undoing.key);
        }
        return {Outcome::Unchanged, facts.target, undoing.file, {}, {}, {}, {}};
    }
    return RepeatEdits(undoing.file, facts.back, options, &work.kept);
}

// Where that leaves something in the clip's other place, this follows; a dry run has told of it already.
UpdateResult UpdateBothPlaces(const std::filesystem::path& clip, const ClipOptions& options,
                              const std::function<void(SXMPMeta&)>& change, KeptFolder& kept) {
    UpdateResult result = UpdateClip(clip, options, change, &kept);
    if (!result.unsettled || options.dryRun) {
        result.outcome = result.unsettled ? Outcome::WouldWrite : result.outcome;
        return result;
    }
    try {
        UpdateResult other = SettleClip(clip, *result.unsettled, options, &kept);
        result.outcome = other.outcome == Outcome::Written ? Outcome::Written : result.outcome;
        std::move(other.warnings.begin(), other.warnings.end(), std::back_inserter(result.warnings));
        return result;
    } catch (const ClipInterrupted&) {
        throw;
    } catch (const FileError& error) {
        const char* const place = *result.unsettled == Target::Inside ? "inside" : "in its sidecar";
        throw ClipError(fmt::format("still says what it said {}, which {}", place, error.what()));
    }
}

void Update(const ClipTask& task, const ClipOptions& options, const Work& work, ClipRecord& record) {
    SceneChange change;
    const auto make = [&](SXMPMeta& xmp) { change = task.change(xmp); };
    UpdateResult result =
        task.undoing ? TakeBack(*task.undoing, options, work) : UpdateBothPlaces(task.clip, options, make, work.kept);
    record.result = ResultOf(result.outcome);
    record.target = result.target;
    record.file = std::move(result.file);
    record.notes = std::move(result.warnings);
    record.warnings = record.notes.size();
    std::move(result.notes.begin(), result.notes.end(), std::back_inserter(record.notes));
    if (record.result != ClipResult::Unchanged) {
        std::move(change.notes.begin(), change.notes.end(), std::back_inserter(record.notes));
        std::transform(change.paths.begin(), change.paths.end(), std::back_inserter(record.changedPaths), PathText);
    }
}

void Keep(const SceneStays& stays, ClipRecord& record) {
    record.scene.clear();
    if (stays.IsOfAnotherScene()) {
        record.result = ClipResult::Unmatched;
        record.reason = stays.what();
    } else {
        record.result = ClipResult::Unchanged;
        record.notes.emplace_back(stays.what());
    }
}

void UpdateInJournal(const ClipTask& task, const Work& work, ClipRecord& record) {
    if (work.journal == nullptr) {
        return Update(task, work.options, work, record);
    }
    JournaledClip journaled(*work.journal, task.clip, task.scene,
                            task.undoing ? std::optional(task.undoing->key) : std::nullopt);
    ClipOptions options = work.options;
    options.witness = &journaled;
    Update(task, options, work, record);
}

// Every way to fail becomes a record: one clip never stops the others.
ClipRecord WorkOn(const ClipTask& task, const Work& work) {
    ClipRecord record;
    record.clip = task.clip;
    record.scene = task.scene;
    record.words = task.words;
    if (IsInterrupted()) {
        return record;
    }
    if (task.isSkipped) {
        record.result = ClipResult::Skipped;
        return record;
    }
    if (!task.refusal.empty()) {
        record.result = ClipResult::Failed;
        record.reason = task.refusal;
        return record;
    }
    if (task.unmatched) {
        record.result = ClipResult::Unmatched;
        record.reason = *task.unmatched;
        return record;
    }
    try {
        UpdateInJournal(task, work, record);
    } catch (const ClipInterrupted&) {
        record.result = ClipResult::NotDone;
    } catch (const SceneStays& stays) {
        Keep(stays, record);
    } catch (const XMP_Error& error) {
        record.result = ClipResult::Failed;
        record.reason = fmt::format("{} (XMP error {})", error.what(), error.GetID());
    } catch (const std::exception& error) {
        record.result = ClipResult::Failed;
        record.reason = error.what();
    }
    return record;
}

std::string ResultLine(const ClipRecord& record, const BatchWords& words) {
    std::string line =
        fmt::format("{}: {}", record.clip.string(), ResultWord(record.result, record.words ? *record.words : words));
    if (!record.scene.empty()) {
        line += ", scene " + record.scene;
    }
    if (record.target == Target::Sidecar) {
        line += ", sidecar " + record.file.filename().string();
    }
    return SafeLine(line) + '\n';
}

void Print(const ClipRecord& record, const BatchOptions& options, const BatchWords& words, Output& output) {
    if (record.result == ClipResult::Failed) {
        return output.Error(record.clip.string() + ": " + record.reason);
    }
    if (record.result == ClipResult::Unmatched) {
        return output.Warning(record.clip.string() + ": not written: " + record.reason);
    }
    if (record.result == ClipResult::NotDone) {
        return;
    }
    std::string text = ResultLine(record, words);
    if (options.showPaths) {
        for (const std::string& path : record.changedPaths) {
            text += "  " + SafeLine(path) + '\n';
        }
    }
    output.Result(text);
    for (std::size_t index = 0; index < record.notes.size(); ++index) {
        const std::string line = record.clip.string() + ": " + record.notes[index];
        index < record.warnings ? output.Warning(line) : output.Note(line);
    }
}

// Asked for only where somebody sees them.
std::vector<std::uint64_t> Sizes(const std::vector<ClipTask>& tasks, const Output& output) {
    std::vector<std::uint64_t> sizes(tasks.size());
    for (std::size_t index = 0; output.ShowsProgress() && index < tasks.size(); ++index) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(tasks[index].clip, error);
        sizes[index] = error ? 0 : size;
    }
    return sizes;
}

/// What is said while the work goes on.
class Saying {
public:
    Saying(const std::vector<std::uint64_t>& sizes, Output& output)
        : mOutput(output), mBefore(CountedBytes()),
          mProgress{0, sizes.size(), 0, std::accumulate(sizes.begin(), sizes.end(), std::uint64_t{0}), {}} {}

    /// On any thread.
    void Later(std::string line) {
        const std::lock_guard lock(mMutex);
        mLines.push_back(std::move(line));
    }

    /// On the output's thread.
    void Now(std::size_t clipsDone) {
        for (const std::string& line : TakeLines()) {
            mOutput.Note(line);
        }
        mProgress.clipsDone = clipsDone;
        mProgress.bytesDone = CountedBytes() - mBefore;
        mProgress.elapsed = std::chrono::steady_clock::now() - mStart;
        mOutput.Progress(ProgressLine(mProgress));
    }

private:
    std::vector<std::string> TakeLines() {
        const std::lock_guard lock(mMutex);
        return std::exchange(mLines, {});
    }

    Output& mOutput;
    std::uint64_t mBefore;
    BatchProgress mProgress;
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
    std::mutex mMutex;
    std::vector<std::string> mLines;
};

LockSettings SayingWaits(LockSettings locks, Saying& saying) {
    locks.onWait = [&saying](const std::filesystem::path& clip, const std::string& holder) {
        saying.Later(clip.string() + ": waits for " + holder);
    };
    return locks;
}

std::string Summary(const std::vector<ClipRecord>& records, const BatchOptions& options, const BatchWords& words) {
    std::array<std::size_t, 7> counts{};
    std::size_t others = 0; // done in words of their own
    const BatchWords* otherWords = nullptr;
    const ClipResult done = options.clip.dryRun ? ClipResult::Would : ClipResult::Done;
    for (const ClipRecord& record : records) {
        const bool isOther = record.words != nullptr && record.result == done;
        others += isOther ? 1 : 0;
        otherWords = isOther ? record.words : otherWords;
        counts[static_cast<std::size_t>(record.result)] += isOther ? 0 : 1;
    }
    const auto count = [&](ClipResult result) { return counts[static_cast<std::size_t>(result)]; };
    std::string summary = fmt::format("{} {}, {} unchanged, {} failed", count(done), ResultWord(done, words),
                                      count(ClipResult::Unchanged), count(ClipResult::Failed));
    if (others > 0) {
        summary += fmt::format(", {} {}", others, ResultWord(done, *otherWords));
    }
    if (count(ClipResult::Skipped) > 0) {
        summary += fmt::format(", {} skipped", count(ClipResult::Skipped));
    }
    if (count(ClipResult::Unmatched) > 0) {
        summary += fmt::format(", {} without a scene", count(ClipResult::Unmatched));
    }
    if (count(ClipResult::NotDone) > 0) {
        summary += fmt::format(", {} not done", count(ClipResult::NotDone));
    }
    return summary;
}

int ExitCodeOf(const std::vector<ClipRecord>& records) {
    const auto has = [&](ClipResult result) {
        return std::any_of(records.begin(), records.end(),
                           [result](const ClipRecord& record) { return record.result == result; });
    };
    if (has(ClipResult::Failed) || has(ClipResult::NotDone)) {
        return kSomeFailed;
    }
    return has(ClipResult::Unmatched) ? kUnmatched : kDone;
}

// A run that only tells changes nothing, the journal neither.
std::unique_ptr<JournalWriter> OpenJournal(const BatchOptions& options, RunFacts facts) {
    const bool isKept = options.journal.isKept && !options.clip.dryRun;
    return isKept ? std::make_unique<JournalWriter>(JournalNamed(options.journal.place), std::move(facts)) : nullptr;
}

void FinishJournal(JournalWriter* journal, Output& output) {
    try {
        if (journal != nullptr) {
            journal->Finish();
        }
    } catch (const JournalError& error) { // what was to be changed is recorded; only its end is not
        output.Warning(error.what());
    }
}

} // namespace

int RunBatch(const std::vector<ClipTask>& tasks, const BatchOptions& options, const BatchWords& words, RunFacts facts,
             Output& output) {
    const InterruptSignals signals;
    const std::unique_ptr<JournalWriter> journal = OpenJournal(options, std::move(facts));
    ClipReport report(options.report, words);
    ClipOptions clipOptions = options.clip;
    clipOptions.hash = journal ? std::optional(options.journal.hash) : std::nullopt;
    const unsigned threads = options.jobs == 0 ? std::max(1U, std::thread::hardware_concurrency()) : options.jobs;
    const unsigned passes = options.clip.verifyMedia ? 2 : 1;
    const std::vector<std::uint64_t> sizes = Sizes(tasks, output);
    std::vector<ClipRecord> records;
    records.reserve(tasks.size());
    Saying saying(sizes, output);
    KeptFolder kept(SayingWaits(options.locks, saying));
    const Work work = {clipOptions, kept, journal.get()};
    ComputeInOrder<ClipRecord>(
        tasks.size(), threads,
        [&](std::size_t index) {
            const CountedClip counted(sizes[index], passes);
            return WorkOn(tasks[index], work);
        },
        [&](std::size_t index, ClipRecord record) {
            saying.Now(index);
            Print(record, options, words, output);
            report.Add(record);
            records.push_back(std::move(record));
            saying.Now(index + 1);
        },
        [&] { saying.Now(records.size()); });
    FinishJournal(journal.get(), output);
    output.Note(Summary(records, options, words));
    report.Finish();
    return ExitCodeOf(records);
}

} // namespace zonstory

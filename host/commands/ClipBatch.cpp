#include "commands/ClipBatch.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

#include <fmt/format.h>

#include "clip/Interrupt.h"
#include "clip/Workspace.h"
#include "commands/ClipReport.h"
#include "commands/InOrder.h"
#include "commands/InterruptSignals.h"
#include "commands/SceneSync.h"
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

void Update(const ClipTask& task, const ClipOptions& options, KeptFolder& kept, ClipRecord& record) {
    std::vector<zonmetadata::Path> changed;
    UpdateResult result = UpdateClip(
        task.clip, options, [&](SXMPMeta& xmp) { changed = task.change(xmp); }, &kept);
    record.result = ResultOf(result.outcome);
    record.target = result.target;
    record.file = std::move(result.file);
    record.notes = std::move(result.notes);
    if (record.result != ClipResult::Unchanged) {
        std::transform(changed.begin(), changed.end(), std::back_inserter(record.changedPaths), PathText);
    }
}

// Every way to fail becomes a record: one clip never stops the others.
ClipRecord WorkOn(const ClipTask& task, const ClipOptions& options, KeptFolder& kept) {
    ClipRecord record;
    record.clip = task.clip;
    record.scene = task.scene;
    if (IsInterrupted()) {
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
        Update(task, options, kept, record);
    } catch (const ClipInterrupted&) {
        record.result = ClipResult::NotDone;
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
    std::string line = fmt::format("{}: {}", record.clip.string(), ResultWord(record.result, words));
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
    for (const std::string& note : record.notes) {
        output.Note(record.clip.string() + ": " + note);
    }
}

std::string Summary(const std::vector<ClipRecord>& records, const BatchOptions& options, const BatchWords& words) {
    std::array<std::size_t, 6> counts{};
    for (const ClipRecord& record : records) {
        ++counts[static_cast<std::size_t>(record.result)];
    }
    const auto count = [&](ClipResult result) { return counts[static_cast<std::size_t>(result)]; };
    const ClipResult done = options.clip.dryRun ? ClipResult::Would : ClipResult::Done;
    std::string summary = fmt::format("{} {}, {} unchanged, {} failed", count(done), ResultWord(done, words),
                                      count(ClipResult::Unchanged), count(ClipResult::Failed));
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

} // namespace

int RunBatch(const std::vector<ClipTask>& tasks, const BatchOptions& options, const BatchWords& words, Output& output) {
    const InterruptSignals signals;
    const unsigned threads = options.jobs == 0 ? std::max(1U, std::thread::hardware_concurrency()) : options.jobs;
    std::vector<ClipRecord> records;
    records.reserve(tasks.size());
    KeptFolder kept;
    ComputeInOrder<ClipRecord>(
        tasks.size(), threads, [&](std::size_t index) { return WorkOn(tasks[index], options.clip, kept); },
        [&](std::size_t index, ClipRecord record) {
            Print(record, options, words, output);
            records.push_back(std::move(record));
            output.Progress(fmt::format("{} of {} clips", index + 1, tasks.size()));
        });
    output.Note(Summary(records, options, words));
    if (!options.report.empty()) {
        WriteClipReport(options.report, records, words);
    }
    return ExitCodeOf(records);
}

} // namespace zonstory

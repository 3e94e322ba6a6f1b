#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "clip/Clip.h"
#include "clip/Workspace.h"
#include "commands/ClipRecord.h"
#include "commands/SceneSync.h"
#include "journal/JournalEntry.h"
#include "journal/JournalPlace.h"
#include "output/Output.h"

/// Changes many clips, one failure not stopping the others: the work of `write` and `clear`.
namespace zonstory {

/// One clip and what is to be done to it.
struct ClipTask {
    std::filesystem::path clip;
    std::string refusal;                  ///< Why nothing can be done, which is a failure; empty where something is.
    std::optional<std::string> unmatched; ///< Why no scene was found, so that the clip is left alone.
    std::string scene;                    ///< The number that is written; empty for `clear`.
    /// Called on any thread. May throw SceneStays.
    std::function<SceneChange(SXMPMeta&)> change;
    bool isSkipped = false;            ///< Nothing is done with it, as its user wants it.
    const BatchWords* words = nullptr; ///< For this clip alone; null for those of the run.

    /// A change that is taken back, in place of one that is made.
    struct Undoing {
        ChangeKey key;              ///< In the journal that the run writes to.
        std::filesystem::path file; ///< What was changed: the clip or its sidecar.
        /// The whole of it. Called on any thread.
        std::function<ChangeFacts()> facts;
    };
    std::optional<Undoing> undoing = {};
};

/// What is recorded of a run, and where.
struct JournalOptions {
    bool isKept = true;
    std::string place; ///< A file or folder; empty for the user's own.
    HashKind hash = HashKind::XXH128;
};

struct BatchOptions {
    ClipOptions clip;
    LockSettings locks;
    /// Threads; 0 for as many as there are processors. Several also on one, since with small clips most of the time is
    /// waiting for the disk, which brings what several wait for there at once; few, for disks that have to seek.
    unsigned jobs = 4;
    bool showPaths = false; ///< Print the changed paths under each clip.
    std::string report;     ///< A file that gets a row a clip, .json or .csv; empty for none.
    JournalOptions journal;
};

/// Works through the clips and prints a line for each, in their order, then a summary. What is changed is in the journal
/// before it is changed, and what became of each clip in the report as soon as it is printed.
/// @param facts  The verb and its story, for the journal.
/// @return An ExitCode. After an interrupt the clips not begun are left out and reported as such.
/// @throws JournalError, OutputError before the first clip when journal or report cannot be written; OutputError after the
///         last when the report could not be completed.
int RunBatch(const std::vector<ClipTask>& tasks, const BatchOptions& options, const BatchWords& words, RunFacts facts,
             Output& output);

} // namespace zonstory

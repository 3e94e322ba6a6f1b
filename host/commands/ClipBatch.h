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
};

struct BatchOptions {
    ClipOptions clip;
    LockSettings locks;
    /// Threads; 0 for as many as there are processors. Several also on one, since with small clips most of the time is
    /// waiting for the disk, which brings what several wait for there at once; few, for disks that have to seek.
    unsigned jobs = 4;
    bool showPaths = false; ///< Print the changed paths under each clip.
    std::string report;     ///< A file that gets a row a clip, .json or .csv; empty for none.
};

/// Works through the clips and prints a line for each, in their order, then a summary.
/// @return An ExitCode. After an interrupt the clips not begun are left out and reported as such.
/// @throws OutputError when the report cannot be written; the clips are done then.
int RunBatch(const std::vector<ClipTask>& tasks, const BatchOptions& options, const BatchWords& words, Output& output);

} // namespace zonstory

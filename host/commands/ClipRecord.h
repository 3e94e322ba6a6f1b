#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "clip/Clip.h"

namespace zonstory {

enum class ClipResult { Done, Unchanged, Would, Failed, NotDone };

/// What became of one clip.
struct ClipRecord {
    std::filesystem::path clip;
    std::string scene;
    ClipResult result = ClipResult::NotDone;
    Target target = Target::Inside; ///< Means nothing where the clip failed or was not done.
    std::filesystem::path file;     ///< The file that holds the metadata; empty where the clip failed or was not done.
    std::string reason;             ///< Of a failure.
    std::vector<std::string> notes;
    std::vector<std::string> changedPaths;
};

} // namespace zonstory

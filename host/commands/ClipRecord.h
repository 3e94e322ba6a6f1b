#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "clip/Clip.h"

namespace zonstory {

enum class ClipResult { Done, Unchanged, Would, Failed, Unmatched, NotDone, Skipped };

/// How a command calls what it did.
struct BatchWords {
    const char* done;  ///< "written"
    const char* would; ///< "would be written"
};

/// What became of one clip.
struct ClipRecord {
    std::filesystem::path clip;
    std::string scene;
    ClipResult result = ClipResult::NotDone;
    Target target = Target::Inside; ///< Means nothing where no file was looked at.
    std::filesystem::path file;     ///< The file that holds the metadata; empty where none was looked at.
    std::string reason;             ///< Of a failure, or why no scene was found.
    std::vector<std::string> notes;
    std::size_t warnings = 0; ///< How many of the notes, from the first on, are for those as well who want no notes.
    std::vector<std::string> changedPaths;
    const BatchWords* words = nullptr; ///< Null for those of the run.
};

} // namespace zonstory

#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zonstory {

/// A path that cannot be searched, and why, in one line without its name.
struct UnsearchedPath {
    std::filesystem::path path;
    std::string reason;
};

struct FoundClips {
    std::vector<std::filesystem::path> clips; ///< Each file once, under the first name by which it was found.
    std::vector<UnsearchedPath> errors;
};

/// Whether a file's name says that it is picture or sound.
bool IsMediaName(const std::filesystem::path& file);

/// Finds the clips that paths stand for: a file for itself, a folder for the media files in it, sorted by name. Hidden
/// files and folders are left out, and so is what another run has in work. Of the
/// numbered frames of one sequence the first is the clip. A sidecar that is named beside its clip, as by
/// a shell's "*", is part of that clip and passed over; one without its clip stays, to be refused when its turn comes.
/// @param recursive  Folders within folders too; one that is reached twice, as by a link, is searched once.
FoundClips FindClips(const std::vector<std::filesystem::path>& paths, bool recursive);

} // namespace zonstory

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "files/FileDescriptor.h"

namespace zonstory {

/// The hidden folder beside clips in which their new versions grow.
inline constexpr const char* kWorkingFolder = ".zonstory-work";

/// A file in a working folder.
struct Leftover {
    std::string name;
    std::uint64_t size = 0;
    std::string holder;  ///< Who works on it (see HolderOf()); empty when nobody does.
    std::string problem; ///< Why it could not be removed.
};

/// Removes from a working folder what dead runs left, whatever the clips are called today that they worked on. What
/// another run holds stays, and so does what is not named as this program names its files.
/// @param dryRun  Tells, and removes nothing.
/// @return All that there was, by name, locks left out.
/// @throws ClipError when nobody can tell what is held, since the file system has no locks.
std::vector<Leftover> RemoveLeftovers(const FileDescriptor& folder, bool dryRun = false);

/// Removes all files whose name begins so, save the lock.
void RemoveFiles(const FileDescriptor& folder, const std::string& prefix);

} // namespace zonstory

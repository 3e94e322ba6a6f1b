#pragma once

#include <cstdint>

#include "clip/layout/Edit.h"
#include "files/FileDescriptor.h"

namespace zonstory {

/// Writes a file's new version into an empty one, each kept byte in the way that costs least: both share the blocks where
/// the file system can do that and a stretch moves by whole blocks, else the system copies, else this program.
/// @param from    Not open for a file without bytes.
/// @param size    Of the old version.
/// @param to      Open for reading and writing.
/// @param folder  Where it lies, asked for its free space before anything is copied.
/// @throws FileError when there is too little space, said before the first byte, or a call fails; ClipInterrupted.
void CopyEdited(const FileDescriptor& from, std::uint64_t size, const EditList& edits, const FileDescriptor& to,
                const FileDescriptor& folder);

/// @throws FileError "needs 2.1 GB of free space in its folder, which has 1.2 GB".
void RequireFreeSpace(const FileDescriptor& folder, std::uint64_t needed);

} // namespace zonstory

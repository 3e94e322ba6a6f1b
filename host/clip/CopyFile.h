#pragma once

#include <cstdint>

#include "files/FileDescriptor.h"

namespace zonstory {

/// Copies the first `size` bytes of a file into an empty one, in the way that costs least: both share the blocks where
/// the file system can do that, else the system copies, else this program.
/// @param folder  Where the copy lies, asked for its free space before anything is copied.
/// @param spaceFactor  How many times the size is going to be needed in all.
/// @throws ClipError when there is too little space, said before the first byte, or a call fails; ClipInterrupted.
void CopyFile(const FileDescriptor& from, const FileDescriptor& to, std::int64_t size, const FileDescriptor& folder,
              int spaceFactor);

/// @throws ClipError "needs 2.1 GB of free space in its folder, which has 1.2 GB".
void RequireFreeSpace(const FileDescriptor& folder, std::int64_t needed);

} // namespace zonstory

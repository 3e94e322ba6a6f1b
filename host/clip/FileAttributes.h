#pragma once

#include <string>
#include <vector>

#include <sys/stat.h>

#include "files/FileDescriptor.h"

namespace zonstory {

/// Gives a file what belongs to another beside its bytes: owner, mode, extended attributes (access lists among them),
/// and no other ones.
/// @return What could not be kept, for the user; empty when all was.
/// @throws ClipError when the mode cannot be set, since a file that is more open than before must not take its place.
std::vector<std::string> CopyAttributes(const FileDescriptor& from, const struct stat& status,
                                        const FileDescriptor& to);

/// Gives a file another's times of last access and modification.
void CopyTimes(const struct stat& status, const FileDescriptor& to);

} // namespace zonstory

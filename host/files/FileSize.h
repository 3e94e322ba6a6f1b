#pragma once

#include <cstdint>

#include <sys/stat.h>

#include "files/FileDescriptor.h"
#include "files/SystemError.h"

namespace zonstory {

/// @throws FileError
inline std::uint64_t FileSize(const FileDescriptor& file) {
    struct stat status {};
    if (::fstat(file.Get(), &status) != 0) {
        ThrowSystemError("cannot be read");
    }
    return static_cast<std::uint64_t>(status.st_size);
}

} // namespace zonstory

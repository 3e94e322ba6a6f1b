#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <sys/types.h>
#include <unistd.h>

#include "files/FileDescriptor.h"

namespace support {

/// A file that is in memory alone, for readers that take a descriptor or a path.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes = {}) : mFile(::memfd_create("test", MFD_CLOEXEC)) { Fill(bytes); }

    void Fill(std::string_view bytes) {
        if (::ftruncate(mFile.Get(), 0) != 0) {
            throw std::runtime_error("no file in memory");
        }
        Put(0, bytes);
    }
    /// What lies between the end and `offset` is a hole.
    void Put(off_t offset, std::string_view bytes) {
        if (::pwrite(mFile.Get(), bytes.data(), bytes.size(), offset) != static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("no memory for a file");
        }
    }

    const zonstory::FileDescriptor& Descriptor() const { return mFile; }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(mFile.Get()); }

private:
    zonstory::FileDescriptor mFile;
};

} // namespace support

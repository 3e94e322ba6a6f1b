#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

#include "Require.h"
#include "files/FileDescriptor.h"

namespace fuzz {

/// A file that is in memory alone, for readers that take a descriptor or a path; used over and over again.
class MemoryFile {
public:
    MemoryFile() : mFile(::memfd_create("fuzz", MFD_CLOEXEC)) { REQUIRE(mFile.IsOpen()); }

    void Fill(std::string_view bytes) {
        REQUIRE(::ftruncate(mFile.Get(), 0) == 0);
        REQUIRE(::pwrite(mFile.Get(), bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    }

    const zonstory::FileDescriptor& Descriptor() const { return mFile; }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(mFile.Get()); }

private:
    zonstory::FileDescriptor mFile;
};

} // namespace fuzz

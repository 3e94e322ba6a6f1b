#include "clip/CopyFile.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <fmt/format.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "clip/Clip.h"
#include "clip/ClipProgress.h"
#include "clip/Interrupt.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

constexpr std::int64_t kPiece = std::int64_t{16} << 20; // what is copied between two looks at the interrupt flag
constexpr std::size_t kBufferSize = std::size_t{1} << 18;
constexpr std::int64_t kSpaceForMetadata = std::int64_t{1} << 20; // what the copy grows by, and the folder's own
constexpr const char* kAttempt = "cannot copy it";

bool SharesBlocks(const FileDescriptor& from, const FileDescriptor& to) {
    return ::ioctl(to.Get(), FICLONE, from.Get()) == 0;
}

// Errors that say "not between these two files" rather than "not at all".
bool IsUnsupported(int error) {
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EBADF ||
           error == EPERM;
}

// How many bytes the system copied: all, or none where it does not know how.
std::int64_t CopyInSystem(const FileDescriptor& from, const FileDescriptor& to, std::int64_t size) {
    std::int64_t done = 0;
    while (done < size) {
        ThrowIfInterrupted();
        const auto piece = static_cast<std::size_t>(std::min(kPiece, size - done));
        const ssize_t copied = ::copy_file_range(from.Get(), &done, to.Get(), nullptr, piece, 0);
        if (copied > 0 || (copied < 0 && errno == EINTR)) {
            CountBytes(copied > 0 ? static_cast<std::uint64_t>(copied) : 0);
            continue; // `done` has moved on
        }
        if (done == 0 && (copied == 0 || IsUnsupported(errno))) {
            return 0;
        }
        if (copied == 0) {
            throw ClipError("became shorter while it was copied");
        }
        ThrowSystemError(kAttempt);
    }
    return done;
}

void CopyByHand(const FileDescriptor& from, const FileDescriptor& to, std::int64_t size) {
    std::string buffer(kBufferSize, '\0');
    for (std::int64_t done = 0; done < size;) {
        ThrowIfInterrupted();
        const auto wanted = std::min(buffer.size(), static_cast<std::size_t>(size - done));
        const ssize_t got = ::pread(from.Get(), buffer.data(), wanted, done);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            ThrowSystemError(kAttempt);
        }
        if (got == 0) {
            throw ClipError("became shorter while it was copied");
        }
        WriteAll(to, std::string_view(buffer.data(), static_cast<std::size_t>(got)));
        done += got;
        CountBytes(static_cast<std::uint64_t>(got));
    }
}

std::string InWords(std::int64_t bytes) {
    constexpr double kMega = 1e6;
    constexpr double kGiga = 1e9;
    const auto value = static_cast<double>(bytes);
    return value >= kGiga ? fmt::format("{:.1f} GB", value / kGiga) : fmt::format("{:.1f} MB", value / kMega);
}

} // namespace

void CopyFile(const FileDescriptor& from, const FileDescriptor& to, std::int64_t size, const FileDescriptor& folder,
              int spaceFactor) {
    const bool isShared = SharesBlocks(from, to);
    const std::int64_t copies = isShared ? spaceFactor - 1 : spaceFactor;
    RequireFreeSpace(folder, copies * size + kSpaceForMetadata);
    if (!isShared && CopyInSystem(from, to, size) == 0) {
        CopyByHand(from, to, size);
    }
}

void RequireFreeSpace(const FileDescriptor& folder, std::int64_t needed) {
    struct statvfs space {};
    if (::fstatvfs(folder.Get(), &space) != 0 || space.f_blocks == 0) {
        return; // a file system that does not tell
    }
    const auto available = static_cast<std::int64_t>(space.f_bavail * space.f_frsize);
    if (available < needed) {
        throw ClipError(
            fmt::format("needs {} of free space in its folder, which has {}", InWords(needed), InWords(available)));
    }
}

} // namespace zonstory

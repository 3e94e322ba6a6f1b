#include "clip/CopyFile.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include <fcntl.h>
#include <fmt/format.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "clip/CountedBytes.h"
#include "clip/EditPlaces.h"
#include "clip/Interrupt.h"
#include "files/FileError.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

constexpr std::uint64_t kPiece = std::uint64_t{16} << 20; // what is copied between two looks at the interrupt flag
constexpr std::size_t kBufferSize = std::size_t{1} << 20;
constexpr std::uint64_t kBlock = 4096; // what file systems share, and by what layouts move media
constexpr std::uint64_t kWorthSharing = 64 * kBlock;
constexpr std::uint64_t kSpaceForMetadata = std::uint64_t{1} << 20; // the folder's own
constexpr const char* kAttempt = "cannot copy it";
constexpr const char* kShorter = "became shorter while it was copied";

// Errors that say "not between these two files" rather than "not at all".
bool IsUnsupported(int error) {
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EBADF ||
           error == EPERM;
}

/// Copies stretches from one file to another.
class Copier {
public:
    Copier(const FileDescriptor& from, std::uint64_t size, const FileDescriptor& to)
        : mFrom(from), mSize(size), mTo(to) {}

    /// Whether the middle of it, where whole blocks lie, is the new version's now without having been copied.
    bool Share(const Stretch& stretch) {
        const Stretch middle = MiddleOf(stretch);
        if (middle.size < kWorthSharing) {
            return false;
        }
        const bool reachesEnd = middle.from + middle.size == mSize; // the last block may be shorter there
        file_clone_range range{};
        range.src_fd = mFrom.Get();
        range.src_offset = middle.from;
        range.src_length = reachesEnd ? 0 : middle.size;
        range.dest_offset = middle.to;
        return ::ioctl(mTo.Get(), FICLONERANGE, &range) == 0;
    }

    /// What Share() leaves.
    void CopyAround(const Stretch& stretch) {
        const Stretch middle = MiddleOf(stretch);
        const std::uint64_t head = middle.from - stretch.from;
        Copy({stretch.from, stretch.to, head});
        const std::uint64_t done = head + middle.size;
        Copy({stretch.from + done, stretch.to + done, stretch.size - done});
    }

    void Copy(Stretch stretch) {
        while (stretch.size > 0) {
            ThrowIfInterrupted();
            const std::uint64_t wanted = std::min(kPiece, stretch.size);
            const std::uint64_t done = mSystemCopies ? CopyInSystem(stretch, wanted) : CopyByHand(stretch, wanted);
            StartFlush(stretch.to, done);
            stretch = {stretch.from + done, stretch.to + done, stretch.size - done};
            CountBytes(done);
        }
    }

private:
    Stretch MiddleOf(const Stretch& stretch) const {
        if (stretch.from % kBlock != stretch.to % kBlock) {
            return {stretch.from, stretch.to, 0};
        }
        const std::uint64_t head = std::min(stretch.size, (kBlock - stretch.from % kBlock) % kBlock);
        const bool reachesEnd = stretch.from + stretch.size == mSize;
        const std::uint64_t rest = stretch.size - head;
        return {stretch.from + head, stretch.to + head, reachesEnd ? rest : rest - rest % kBlock};
    }

    // Starts writing to the disk what is in memory, while the rest is copied and compared: the flush at the end then finds
    // most of it done. Of little, the flush alone is quicker.
    void StartFlush(std::uint64_t to, std::uint64_t size) {
        constexpr std::uint64_t kSmall = std::uint64_t{8} << 20;
        if (size > kSmall) {
            ::sync_file_range(mTo.Get(), static_cast<off64_t>(to), static_cast<off64_t>(size), SYNC_FILE_RANGE_WRITE);
        }
    }

    // Returns 0 where the system does not know how.
    std::uint64_t CopyInSystem(const Stretch& stretch, std::uint64_t wanted) {
        auto from = static_cast<off64_t>(stretch.from);
        auto to = static_cast<off64_t>(stretch.to);
        const ssize_t copied = ::copy_file_range(mFrom.Get(), &from, mTo.Get(), &to, wanted, 0);
        if (copied > 0) {
            return static_cast<std::uint64_t>(copied);
        }
        if (copied < 0 && !IsUnsupported(errno) && errno != EINTR) {
            ThrowSystemError(kAttempt);
        }
        mSystemCopies = copied < 0 && errno == EINTR; // nothing copied: the file is shorter, or the system cannot tell
        return 0;
    }

    std::uint64_t CopyByHand(const Stretch& stretch, std::uint64_t wanted) {
        if (!mBuffer) {
            mBuffer = std::make_unique_for_overwrite<char[]>(kBufferSize);
        }
        const ssize_t got = ::pread(mFrom.Get(), mBuffer.get(), std::min<std::size_t>(kBufferSize, wanted),
                                    static_cast<off_t>(stretch.from));
        if (got < 0 && errno == EINTR) {
            return 0;
        }
        if (got < 0) {
            ThrowSystemError(kAttempt);
        }
        if (got == 0) {
            throw FileError(kShorter);
        }
        WriteAllAt(mTo, std::string_view(mBuffer.get(), static_cast<std::size_t>(got)), stretch.to);
        return static_cast<std::uint64_t>(got);
    }

    const FileDescriptor& mFrom;
    std::uint64_t mSize;
    const FileDescriptor& mTo;
    bool mSystemCopies = true;
    std::unique_ptr<char[]> mBuffer;
};

// The longest first: whether it can be shared decides how much space is needed.
void CopyStretches(Copier& copier, std::vector<Stretch> stretches, std::uint64_t newSize,
                   const FileDescriptor& folder) {
    std::sort(stretches.begin(), stretches.end(),
              [](const Stretch& left, const Stretch& right) { return left.size > right.size; });
    const bool sharesBlocks = !stretches.empty() && copier.Share(stretches.front());
    if (!sharesBlocks) {
        RequireFreeSpace(folder, newSize + kSpaceForMetadata);
    }
    for (std::size_t index = 0; index < stretches.size(); ++index) {
        if (sharesBlocks && (index == 0 || copier.Share(stretches[index]))) {
            copier.CopyAround(stretches[index]);
        } else {
            copier.Copy(stretches[index]);
        }
    }
}

std::string InWords(std::uint64_t bytes) {
    constexpr double kMega = 1e6;
    constexpr double kGiga = 1e9;
    const auto value = static_cast<double>(bytes);
    return value >= kGiga ? fmt::format("{:.1f} GB", value / kGiga) : fmt::format("{:.1f} MB", value / kMega);
}

} // namespace

void CopyEdited(const FileDescriptor& from, std::uint64_t size, const EditList& edits, const FileDescriptor& to,
                const FileDescriptor& folder) {
    Copier copier(from, size, to);
    CopyStretches(copier, StretchesOf(edits, size), SizeAfter(edits, size), folder);
    std::uint64_t moved = 0;
    for (const Edit& edit : edits) {
        WriteAllAt(to, edit.put, edit.offset + moved);
        moved += edit.put.size() - edit.taken;
    }
}

void RequireFreeSpace(const FileDescriptor& folder, std::uint64_t needed) {
    struct statvfs space {};
    if (::fstatvfs(folder.Get(), &space) != 0 || space.f_blocks == 0) {
        return; // a file system that does not tell
    }
    const std::uint64_t available = std::uint64_t{space.f_bavail} * space.f_frsize;
    if (available < needed) {
        throw FileError(
            fmt::format("needs {} of free space in its folder, which has {}", InWords(needed), InWords(available)));
    }
}

} // namespace zonstory

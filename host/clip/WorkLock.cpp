#include "clip/WorkLock.h"

#include <cstdint>
#include <ctime>
#include <string_view>

#include <fcntl.h>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "clip/Clip.h"
#include "files/FileIdentity.h"
#include "files/SystemError.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr std::size_t kDigits = 16;
constexpr int kFlags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
constexpr mode_t kOthersMayWrite = 0022; // a bit above, each may read
constexpr const char* kAttempt = "cannot lock it";

bool HasNoLocks(int error) {
    return error == ENOLCK || error == ENOSYS || error == EOPNOTSUPP;
}

// The run before removes its lock in the end; a lock taken on what it removed keeps nobody out.
bool IsStillThere(const FileDescriptor& lock, const FileDescriptor& folder, const std::string& name) {
    struct stat held {};
    struct stat named {};
    return ::fstat(lock.Get(), &held) == 0 && ::fstatat(folder.Get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           KeyOf(held) == KeyOf(named);
}

// Whoever may work in the folder may take its locks, whatever the mask of the one who made them.
void OpenToAll(const FileDescriptor& folder, const FileDescriptor& lock) {
    struct stat status {};
    if (::fstat(folder.Get(), &status) == 0 && (status.st_mode & kOthersMayWrite) != 0) {
        const mode_t writers = status.st_mode & kOthersMayWrite;
        ::fchmod(lock.Get(), S_IRUSR | S_IWUSR | writers | writers << 1);
    }
}

FileDescriptor OpenLock(const FileDescriptor& folder, const std::string& name) {
    FileDescriptor lock(::openat(folder.Get(), name.c_str(), kFlags | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR));
    if (lock.IsOpen()) {
        OpenToAll(folder, lock);
    } else if (errno == EEXIST) {
        lock = FileDescriptor(::openat(folder.Get(), name.c_str(), kFlags));
    }
    if (!lock.IsOpen() && errno != ENOENT) {
        ThrowSystemError(kAttempt);
    }
    return lock;
}

// For those who wait; work does not depend on it.
void SayWhoHolds(const FileDescriptor& lock) {
    char host[65] = "";
    ::gethostname(host, sizeof host - 1);
    const std::string line =
        fmt::format("process {} on {} since {:%F %T} UTC\n", ::getpid(), host, fmt::gmtime(std::time(nullptr)));
    [[maybe_unused]] const ssize_t ignored = ::pwrite(lock.Get(), line.data(), line.size(), 0);
}

} // namespace

std::string WorkPrefix(const std::string& fileName) {
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a
    for (const char character : fileName) {
        hash ^= static_cast<unsigned char>(LowerCase(character));
        hash *= 0x100000001B3;
    }
    return fmt::format("{:0{}x}.", hash, kDigits);
}

std::string WorkPrefixOf(const std::string& nameInFolder) {
    return nameInFolder.find_first_not_of("0123456789abcdef") == kDigits && nameInFolder[kDigits] == '.'
               ? nameInFolder.substr(0, kDigits + 1)
               : std::string();
}

std::string LockName(const std::string& prefix) {
    return prefix + "lock";
}

LockAttempt TryLock(const FileDescriptor& folder, const std::string& prefix, FileDescriptor& lock) {
    const std::string name = LockName(prefix);
    lock = OpenLock(folder, name);
    if (!lock.IsOpen()) {
        return LockAttempt::Gone;
    }
    if (::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (HasNoLocks(errno)) {
            ::unlinkat(folder.Get(), name.c_str(), 0);
            throw ClipError("cannot be locked, since its file system has no locks; --no-lock goes without");
        }
        if (errno != EWOULDBLOCK && errno != EINTR) {
            ThrowSystemError(kAttempt);
        }
        return LockAttempt::Busy;
    }
    if (!IsStillThere(lock, folder, name)) {
        return LockAttempt::Gone;
    }
    SayWhoHolds(lock);
    return LockAttempt::Locked;
}

LockAttempt MarkOnly(const FileDescriptor& folder, const std::string& prefix, FileDescriptor& lock) {
    lock = OpenLock(folder, LockName(prefix));
    if (!lock.IsOpen()) {
        return LockAttempt::Gone;
    }
    SayWhoHolds(lock);
    return LockAttempt::Locked;
}

std::string HolderOf(const FileDescriptor& lock) {
    char bytes[256];
    const ssize_t got = ::pread(lock.Get(), bytes, sizeof bytes, 0);
    const std::string_view line = std::string_view(bytes, got > 0 ? static_cast<std::size_t>(got) : 0);
    const std::size_t end = line.find('\n');
    return end == std::string_view::npos ? "another run" : std::string(line.substr(0, end));
}

} // namespace zonstory

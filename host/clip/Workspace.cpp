#include "clip/Workspace.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string_view>
#include <thread>

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "clip/Clip.h"
#include "clip/Interrupt.h"
#include "clip/SystemError.h"

namespace zonstory {

namespace {

constexpr const char* kNamePrefix = ".zonstory-";
constexpr const char* kLockName = "lock";
constexpr auto kRetryInterval = std::chrono::milliseconds(5);

// Short whatever the file's name, which may already have the greatest length there is. Upper and lower case meet in one
// workspace, for file systems that hold them for the same.
std::string WorkspaceName(const std::string& fileName) {
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a; two names that meet in one value merely wait for each other
    for (const char character : fileName) {
        const bool isUpper = character >= 'A' && character <= 'Z';
        hash ^= static_cast<unsigned char>(isUpper ? character - 'A' + 'a' : character);
        hash *= 0x100000001B3;
    }
    return fmt::format("{}{:016x}", kNamePrefix, hash);
}

FileDescriptor OpenWorkspace(int parent, const std::string& name) {
    return FileDescriptor(::openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// Not open when the workspace has just been removed by the run before.
FileDescriptor OpenLock(const FileDescriptor& workspace) {
    return FileDescriptor(
        ::openat(workspace.Get(), kLockName, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
}

// The run before removes the lock with its workspace; a lock taken on what it removed keeps nobody out.
bool IsStillThere(const FileDescriptor& descriptor, int parent, const std::string& name) {
    struct stat held {};
    struct stat named {};
    return ::fstat(descriptor.Get(), &held) == 0 && ::fstatat(parent, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

// All but the lock; nothing in a workspace is a folder.
void Empty(const FileDescriptor& workspace) {
    const int copy = ::openat(workspace.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(copy >= 0 ? ::fdopendir(copy) : nullptr, &::closedir);
    if (!folder) {
        return;
    }
    while (const dirent* entry = ::readdir(folder.get())) {
        if (const std::string_view name = entry->d_name; name != kLockName && name != "." && name != "..") {
            ::unlinkat(workspace.Get(), entry->d_name, 0);
        }
    }
}

// The lock's descriptor goes before the folder: where a file is open, a network file system keeps a name for it, and the
// folder would not be empty. Once its name is gone, the lock keeps nobody out anyway.
void Remove(int parent, const std::string& name, const FileDescriptor& workspace, FileDescriptor lock) {
    Empty(workspace);
    ::unlinkat(workspace.Get(), kLockName, 0);
    lock = FileDescriptor();
    ::unlinkat(parent, name.c_str(), AT_REMOVEDIR); // fails when the next run has already made its own lock in it
}

enum class Attempt { Locked, Busy, Gone };

Attempt TryLock(int parent, const std::string& name, FileDescriptor& workspace, FileDescriptor& lock) {
    workspace = OpenWorkspace(parent, name);
    if (!workspace.IsOpen()) {
        if (errno != ENOENT) {
            ThrowSystemError("cannot open its working folder " + name);
        }
        return Attempt::Gone;
    }
    lock = OpenLock(workspace);
    if (!lock.IsOpen()) {
        if (errno != ENOENT) {
            ThrowSystemError("cannot lock it");
        }
        return Attempt::Gone;
    }
    if (::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            ThrowSystemError("cannot lock it");
        }
        return Attempt::Busy;
    }
    const bool isOurs = IsStillThere(workspace, parent, name) && IsStillThere(lock, workspace.Get(), kLockName);
    return isOurs ? Attempt::Locked : Attempt::Gone;
}

} // namespace

Workspace::Workspace(const TargetFile& target) try : mTarget(target), mName(WorkspaceName(target.Name())) {
    const int parent = target.FolderDescriptor().Get();
    for (Attempt attempt = Attempt::Gone; attempt != Attempt::Locked;) {
        if (attempt == Attempt::Busy) {
            std::this_thread::sleep_for(kRetryInterval);
        }
        ThrowIfInterrupted();
        if (::mkdirat(parent, mName.c_str(), 0700) != 0 && errno != EEXIST) {
            ThrowSystemError("cannot write in its folder");
        }
        attempt = TryLock(parent, mName, mFolder, mLock);
    }
    Empty(mFolder);
} catch (const ClipError&) {
    RemoveStale(target); // a folder without the lock that it was made for
    throw;
}

Workspace::~Workspace() {
    Remove(mTarget.FolderDescriptor().Get(), mName, mFolder, std::move(mLock));
}

void Workspace::RemoveStale(const TargetFile& target) noexcept try {
    const int parent = target.FolderDescriptor().Get();
    const std::string name = WorkspaceName(target.Name());
    if (::faccessat(parent, name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) != 0) {
        return;
    }
    FileDescriptor workspace;
    FileDescriptor lock;
    if (TryLock(parent, name, workspace, lock) == Attempt::Locked) {
        Remove(parent, name, workspace, std::move(lock));
    } else {
        ::unlinkat(parent, name.c_str(), AT_REMOVEDIR); // if nobody has come as far as a lock
    }
} catch (const std::exception&) { // somebody else's, or out of reach: nothing that this run depends on
}

bool Workspace::IsWorkspaceName(const std::string& name) {
    return name.starts_with(kNamePrefix);
}

std::filesystem::path Workspace::Path(const std::string& name) const {
    return mTarget.Folder() / mName / name;
}

} // namespace zonstory

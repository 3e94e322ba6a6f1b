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
#include <unistd.h>

#include "clip/Clip.h"
#include "clip/Interrupt.h"
#include "files/SystemError.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr const char* kFolderName = ".zonstory-work";
constexpr mode_t kPermissions = 07777;
constexpr mode_t kEverybodyMayWrite = 0222; // a bit above, each may read
constexpr auto kRetryInterval = std::chrono::milliseconds(5);

// Of one length whatever the file's name, which may already have the greatest there is. Upper and lower case meet in one,
// for file systems that hold them for the same.
std::string PrefixFor(const std::string& fileName) {
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a; two names that meet in one value merely wait for each other
    for (const char character : fileName) {
        hash ^= static_cast<unsigned char>(LowerCase(character));
        hash *= 0x100000001B3;
    }
    return fmt::format("{:016x}.", hash);
}

std::string LockName(const std::string& prefix) {
    return prefix + "lock";
}

// As open to others as the folder it lies in, since whoever may put clips there works in it too; and to be listed by all
// of them, since leftovers are sought in it.
void MakeFolder(int parent) {
    if (::mkdirat(parent, kFolderName, 0700) != 0) {
        if (errno != EEXIST) {
            ThrowSystemError("cannot write in its folder");
        }
        return;
    }
    struct stat status {};
    if (::fstat(parent, &status) == 0) {
        const mode_t writers = status.st_mode & kEverybodyMayWrite;
        const mode_t mode = (status.st_mode & kPermissions) | S_IRWXU | writers << 1;
        ::fchmodat(parent, kFolderName, mode, 0); // without it, others wait outside
    }
}

void RemoveFolder(int parent) {
    ::unlinkat(parent, kFolderName, AT_REMOVEDIR); // fails while somebody works in it
}

// In a sticky folder nobody can take another's clip away, but whoever owns the working folder could exchange what lies in
// it. Elsewhere those who could do so can change the clip itself.
void CheckOwner(const FileDescriptor& folder, int parent) {
    struct stat working {};
    struct stat around {};
    if (::fstat(folder.Get(), &working) != 0 || working.st_uid == ::geteuid()) {
        return;
    }
    if (::fstat(parent, &around) == 0 && (around.st_mode & S_ISVTX) != 0 && working.st_uid != around.st_uid) {
        throw ClipError(std::string("its working folder ") + kFolderName + " belongs to another user");
    }
}

FileDescriptor OpenFolder(int parent) {
    FileDescriptor folder(::openat(parent, kFolderName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.IsOpen() && errno != ENOENT) {
        ThrowSystemError(std::string("cannot open its working folder ") + kFolderName);
    }
    if (folder.IsOpen()) {
        CheckOwner(folder, parent);
    }
    return folder;
}

// The run before removes its lock in the end; a lock taken on what it removed keeps nobody out.
bool IsStillThere(const FileDescriptor& lock, const FileDescriptor& folder, const std::string& name) {
    struct stat held {};
    struct stat named {};
    return ::fstat(lock.Get(), &held) == 0 && ::fstatat(folder.Get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           KeyOf(held) == KeyOf(named);
}

// All but the lock; nothing here is a folder.
void RemoveFiles(const FileDescriptor& folder, const std::string& prefix) {
    const int copy = ::openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(copy >= 0 ? ::fdopendir(copy) : nullptr, &::closedir);
    if (!listing) {
        return;
    }
    while (const dirent* entry = ::readdir(listing.get())) {
        if (const std::string_view name = entry->d_name; name.starts_with(prefix) && name != LockName(prefix)) {
            ::unlinkat(folder.Get(), entry->d_name, 0);
        }
    }
}

// The lock's descriptor goes before the folder can: where a file is open, a network file system keeps a name for it, and
// the folder would not be empty. Once its name is gone, the lock keeps nobody out anyway.
void Release(const FileDescriptor& folder, const std::string& prefix, FileDescriptor lock) {
    RemoveFiles(folder, prefix);
    ::unlinkat(folder.Get(), LockName(prefix).c_str(), 0);
    lock = FileDescriptor();
}

enum class Attempt { Locked, Busy, Gone };

Attempt TryLock(const FileDescriptor& folder, const std::string& prefix, FileDescriptor& lock) {
    const std::string name = LockName(prefix);
    lock = FileDescriptor(
        ::openat(folder.Get(), name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
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
    return IsStillThere(lock, folder, name) ? Attempt::Locked : Attempt::Gone;
}

} // namespace

KeptFolder::~KeptFolder() {
    if (mParent.IsOpen()) {
        RemoveFolder(mParent.Get());
    }
}

void KeptFolder::Keep(const TargetFile& target) {
    const std::lock_guard lock(mMutex);
    if (mParent.IsOpen() && mBeside == target.Folder()) {
        return;
    }
    if (mParent.IsOpen()) {
        RemoveFolder(mParent.Get());
    }
    mBeside = target.Folder();
    mParent = FileDescriptor(::fcntl(target.FolderDescriptor().Get(), F_DUPFD_CLOEXEC, 0));
    if (!mParent.IsOpen()) {
        RemoveFolder(target.FolderDescriptor().Get());
    }
}

Workspace::Workspace(const TargetFile& target, KeptFolder* kept) try
    : mTarget(target), mKept(kept), mPrefix(PrefixFor(target.Name())) {
    const int parent = target.FolderDescriptor().Get();
    for (Attempt attempt = Attempt::Gone; attempt != Attempt::Locked;) {
        if (attempt == Attempt::Busy) {
            std::this_thread::sleep_for(kRetryInterval);
        }
        ThrowIfInterrupted();
        if (mFolder = OpenFolder(parent); !mFolder.IsOpen()) {
            MakeFolder(parent);
            mFolder = OpenFolder(parent);
        }
        attempt = mFolder.IsOpen() ? TryLock(mFolder, mPrefix, mLock) : Attempt::Gone;
    }
    RemoveFiles(mFolder, mPrefix);
} catch (const FileError&) {
    RemoveStale(target); // a folder without the lock that it was made for
    throw;
}

Workspace::~Workspace() {
    Release(mFolder, mPrefix, std::move(mLock));
    if (mKept != nullptr) {
        mKept->Keep(mTarget);
    } else {
        RemoveFolder(mTarget.FolderDescriptor().Get());
    }
}

void Workspace::RemoveStale(const TargetFile& target) noexcept try {
    const int parent = target.FolderDescriptor().Get();
    if (::unlinkat(parent, kFolderName, AT_REMOVEDIR) == 0 || errno == ENOENT) {
        return;
    }
    const std::string prefix = PrefixFor(target.Name());
    const FileDescriptor folder = OpenFolder(parent);
    if (::faccessat(folder.Get(), LockName(prefix).c_str(), F_OK, AT_SYMLINK_NOFOLLOW) != 0) {
        return;
    }
    if (FileDescriptor lock; TryLock(folder, prefix, lock) == Attempt::Locked) {
        Release(folder, prefix, std::move(lock));
        RemoveFolder(parent);
    }
} catch (const std::exception&) { // somebody else's, or out of reach: nothing that this run depends on
}

std::filesystem::path Workspace::FolderPath() const {
    return mTarget.Folder() / kFolderName;
}

} // namespace zonstory

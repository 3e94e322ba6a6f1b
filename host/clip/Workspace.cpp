#include "clip/Workspace.h"

#include <algorithm>
#include <cstdint>
#include <thread>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "clip/Clip.h"
#include "clip/Interrupt.h"
#include "clip/Leftovers.h"
#include "clip/WorkLock.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

constexpr mode_t kPermissions = 07777;
constexpr mode_t kEverybodyMayWrite = 0222; // a bit above, each may read

// As open to others as the folder it lies in, since whoever may put clips there works in it too; and to be listed by all
// of them, since leftovers are sought in it.
void MakeFolder(int parent) {
    if (::mkdirat(parent, kWorkingFolder, 0700) != 0) {
        if (errno != EEXIST) {
            ThrowSystemError("cannot write in its folder");
        }
        return;
    }
    struct stat status {};
    if (::fstat(parent, &status) == 0) {
        const mode_t writers = status.st_mode & kEverybodyMayWrite;
        const mode_t mode = (status.st_mode & kPermissions) | S_IRWXU | writers << 1;
        ::fchmodat(parent, kWorkingFolder, mode, 0); // without it, others wait outside
    }
}

void RemoveFolder(int parent) {
    ::unlinkat(parent, kWorkingFolder, AT_REMOVEDIR); // fails while somebody works in it
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
        throw ClipError(std::string("its working folder ") + kWorkingFolder + " belongs to another user");
    }
}

FileDescriptor OpenFolder(int parent) {
    FileDescriptor folder(::openat(parent, kWorkingFolder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.IsOpen() && errno != ENOENT) {
        ThrowSystemError(std::string("cannot open its working folder ") + kWorkingFolder);
    }
    if (folder.IsOpen()) {
        CheckOwner(folder, parent);
    }
    return folder;
}

// Where locks do not work, another run may use the same folder for the same file.
std::string UniquePrefix(const std::string& prefix) {
    std::uint32_t number[2] = {};
    if (::getrandom(number, sizeof number, 0) != sizeof number) {
        ThrowSystemError("cannot name its copy");
    }
    return fmt::format("{}{:08x}{:08x}.", prefix, number[0], number[1]);
}

const LockSettings& SettingsOf(const KeptFolder* kept) {
    static const LockSettings kUsual;
    return kept != nullptr ? kept->Locks() : kUsual;
}

/// Time spent on waiting for another run.
class Wait {
public:
    Wait(const TargetFile& target, const LockSettings& settings) : mTarget(target), mSettings(settings) {}

    /// @throws ClipError at the end of the wait.
    void ForHolder(const FileDescriptor& lock) {
        const auto waited = std::chrono::steady_clock::now() - mStart;
        if (!mIsSaid && waited >= kSilence && mSettings.onWait) {
            mSettings.onWait(mTarget.Path(), HolderOf(lock));
            mIsSaid = true;
        }
        if (waited >= mSettings.wait) {
            throw ClipError("is in work by " + HolderOf(lock));
        }
        std::this_thread::sleep_for(std::clamp<std::chrono::nanoseconds>(waited / 10, kShortest, kLongest));
    }

private:
    static constexpr std::chrono::seconds kSilence{2};
    static constexpr std::chrono::milliseconds kShortest{5};
    static constexpr std::chrono::milliseconds kLongest{100};

    const TargetFile& mTarget;
    const LockSettings& mSettings;
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
    bool mIsSaid = false;
};

void RemoveLeftoversQuietly(const FileDescriptor& folder) noexcept try {
    RemoveLeftovers(folder);
} catch (const std::exception&) { // somebody else's, or out of reach: nothing that this run depends on
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

bool KeptFolder::IsNewFolder(const TargetFile& target) {
    struct stat status {};
    const bool isKnown = ::fstat(target.FolderDescriptor().Get(), &status) == 0;
    const std::lock_guard lock(mMutex);
    return isKnown && mMet.insert(KeyOf(status)).second;
}

Workspace::Workspace(const TargetFile& target, KeptFolder* kept) try
    : mTarget(target), mKept(kept), mPrefix(WorkPrefix(target.Name())), mFilePrefix(UniquePrefix(mPrefix)) {
    TakeLock();
    if (SettingsOf(kept).useLocks && (kept == nullptr || kept->IsNewFolder(target))) {
        RemoveLeftoversQuietly(mFolder);
    }
} catch (const FileError&) {
    RemoveStale(target); // a folder without the lock that it was made for
    throw;
}

void Workspace::TakeLock() {
    const LockSettings& settings = SettingsOf(mKept);
    const int parent = mTarget.FolderDescriptor().Get();
    Wait wait(mTarget, settings);
    for (auto attempt = LockAttempt::Gone; attempt != LockAttempt::Locked;) {
        ThrowIfInterrupted();
        if (attempt == LockAttempt::Busy) {
            wait.ForHolder(mLock);
        }
        if (mFolder = OpenFolder(parent); !mFolder.IsOpen()) {
            MakeFolder(parent);
            mFolder = OpenFolder(parent);
        }
        attempt = !mFolder.IsOpen()   ? LockAttempt::Gone
                  : settings.useLocks ? TryLock(mFolder, mPrefix, mLock)
                                      : MarkOnly(mFolder, mPrefix, mLock);
    }
    if (settings.useLocks) {
        RemoveFiles(mFolder, mPrefix); // of a run that was killed since
    }
}

// The lock's descriptor goes before the folder can: where a file is open, a network file system keeps a name for it, and
// the folder would not be empty. Once its name is gone, the lock keeps nobody out anyway.
Workspace::~Workspace() {
    RemoveFiles(mFolder, mFilePrefix);
    ::unlinkat(mFolder.Get(), LockName(mPrefix).c_str(), 0);
    mLock.Close();
    if (mKept != nullptr) {
        mKept->Keep(mTarget);
    } else {
        RemoveFolder(mTarget.FolderDescriptor().Get());
    }
}

void Workspace::RemoveStale(const TargetFile& target, KeptFolder* kept) noexcept try {
    const int parent = target.FolderDescriptor().Get();
    if (::unlinkat(parent, kWorkingFolder, AT_REMOVEDIR) == 0 || errno == ENOENT) {
        return;
    }
    if (SettingsOf(kept).useLocks && (kept == nullptr || kept->IsNewFolder(target))) {
        RemoveLeftovers(OpenFolder(parent));
        RemoveFolder(parent);
    }
} catch (const std::exception&) { // as in RemoveLeftoversQuietly()
}

std::filesystem::path Workspace::FolderPath() const {
    return mTarget.Folder() / kWorkingFolder;
}

} // namespace zonstory

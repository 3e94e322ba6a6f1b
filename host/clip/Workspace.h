#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_set>

#include "clip/TargetFile.h"
#include "files/FileDescriptor.h"
#include "files/FileIdentity.h"

namespace zonstory {

/// How runs on one clip keep out of each other's way.
struct LockSettings {
    bool useLocks = true;           ///< Without, two runs on a clip are not kept apart; each still replaces it whole.
    std::chrono::seconds wait{600}; ///< For another run, before a clip is given up.
    /// Called on any thread, once a clip that has been waited for two seconds, with who holds it.
    std::function<void(const std::filesystem::path& clip, const std::string& holder)> onWait = {};
};

/// What the working folders of a batch have in common. It keeps the working folder beside the clips from one clip to the
/// next: a flush takes longer in a folder that is new itself, and so does whatever follows the removal of one. One for all
/// threads.
class KeptFolder {
public:
    explicit KeptFolder(LockSettings locks = {}) : mLocks(std::move(locks)) {}
    KeptFolder(const KeptFolder&) = delete;
    KeptFolder& operator=(const KeptFolder&) = delete;
    /// Removes the folder, if nobody else works in it.
    ~KeptFolder();

    /// Keeps the working folder beside this file, and no longer the one kept before.
    void Keep(const TargetFile& target);

    const LockSettings& Locks() const { return mLocks; }
    /// Whether no clip of this file's folder was asked about before.
    bool IsNewFolder(const TargetFile& target);

private:
    const LockSettings mLocks;
    std::mutex mMutex;
    std::filesystem::path mBeside;
    FileDescriptor mParent;
    std::unordered_set<FileKey, FileKeyHash> mMet;
};

/// The place where a file's new version grows: a hidden folder beside it, one for all files there. In it lie, under a name
/// that follows from the file's own, a lock that lets one run at a time work on the file, and the copy on its way.
///
/// So two runs meet at the same lock. A live run holds a lock that the system drops when it dies: leftovers whose lock can
/// be had are stale, and go when a run meets the folder. Where locks do not work, nothing of this keeps two runs apart;
/// then it matters that the names of one run's files are no other's.
class Workspace {
public:
    /// Waits until no other run works on the file, and removes what killed ones left in the folder.
    /// @param target  Must outlive this.
    /// @param kept    Where the folder goes in the end, and how to lock; null to remove it, and to lock as usual.
    /// @throws ClipError when the folder cannot be made, or the wait has an end; ClipInterrupted.
    explicit Workspace(const TargetFile& target, KeptFolder* kept = nullptr);
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    /// Removes all files of this work, then lets the next run in.
    ~Workspace();

    /// Removes what killed runs left beside the file; leaves a live run's alone. Never fails.
    static void RemoveStale(const TargetFile& target, KeptFolder* kept = nullptr) noexcept;

    const FileDescriptor& Folder() const { return mFolder; }
    std::filesystem::path FolderPath() const; ///< Absolute, for those who need a path.
    /// What the names of all files begin with that belong to this work: no other run's do.
    const std::string& FilePrefix() const { return mFilePrefix; }

private:
    void TakeLock();

    const TargetFile& mTarget;
    KeptFolder* mKept;
    std::string mPrefix;
    std::string mFilePrefix;
    FileDescriptor mFolder;
    FileDescriptor mLock;
};

} // namespace zonstory

#pragma once

#include <filesystem>
#include <mutex>
#include <string>

#include "clip/TargetFile.h"
#include "files/FileDescriptor.h"

namespace zonstory {

/// Keeps the working folder beside the clips of a batch from one clip to the next: a flush takes longer in a folder that is
/// new itself, and so does whatever follows the removal of one. One for all threads.
class KeptFolder {
public:
    KeptFolder() = default;
    KeptFolder(const KeptFolder&) = delete;
    KeptFolder& operator=(const KeptFolder&) = delete;
    /// Removes the folder, if nobody else works in it.
    ~KeptFolder();

    /// Keeps the working folder beside this file, and no longer the one kept before.
    void Keep(const TargetFile& target);

private:
    std::mutex mMutex;
    std::filesystem::path mBeside;
    FileDescriptor mParent;
};

/// The place where a file's new version grows: a hidden folder beside it, one for all files there. In it lie, under a name
/// that follows from the file's own, a lock that lets one run at a time work on the file, the copy on its way, and what
/// the toolkit makes beside that copy.
///
/// So two runs meet at the same lock, and a later run finds what a killed one left without listing a folder of ten
/// thousand clips. A live run holds a lock that the system drops when it dies: leftovers whose lock can be had are stale.
/// The lock is a file of its own: network file systems lock no folders, and the replaced file gives way to another.
class Workspace {
public:
    /// Waits until no other run works on the file, and removes what a killed one left.
    /// @param target  Must outlive this.
    /// @param kept    Where the folder goes in the end; null to remove it.
    /// @throws ClipError when the folder cannot be made; ClipInterrupted.
    explicit Workspace(const TargetFile& target, KeptFolder* kept = nullptr);
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    /// Removes all files of this work, then lets the next run in.
    ~Workspace();

    /// Removes what a killed run left beside the file; leaves a live run's alone. Never fails.
    static void RemoveStale(const TargetFile& target) noexcept;

    const FileDescriptor& Folder() const { return mFolder; }
    std::filesystem::path FolderPath() const; ///< Absolute, for those who need a path.
    /// What the names of all files begin with that belong to this work.
    const std::string& FilePrefix() const { return mPrefix; }

private:
    const TargetFile& mTarget;
    KeptFolder* mKept;
    std::string mPrefix;
    FileDescriptor mFolder;
    FileDescriptor mLock;
};

} // namespace zonstory

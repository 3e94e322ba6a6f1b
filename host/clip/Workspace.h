#pragma once

#include <filesystem>
#include <string>

#include "clip/FileDescriptor.h"
#include "clip/TargetFile.h"

namespace zonstory {

/// A hidden folder beside a file that is being replaced. It holds the copy on its way, and whatever the toolkit makes
/// beside that copy, and it is the lock that lets one run at a time work on the file.
///
/// The folder's name follows from the file's name alone. So two runs meet in the same one, and a later run finds what a
/// killed one left without listing a folder of ten thousand clips. A live run holds a lock that the system drops when it
/// dies: leftovers whose lock can be had are stale. The lock is a file rather than the folder itself, since network file
/// systems lock nothing else, and it lies outside the replaced file, so the replacing does not touch it.
class Workspace {
public:
    /// Waits until no other run works on the file, then makes the folder and empties it.
    /// @param target  Must outlive this.
    /// @throws ClipError when the folder cannot be made; ClipInterrupted.
    explicit Workspace(const TargetFile& target);
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    /// Removes the folder with all in it, then lets the next run in.
    ~Workspace();

    /// Removes what a killed run left beside the file; leaves a live run's alone. Never fails.
    static void RemoveStale(const TargetFile& target) noexcept;
    /// Whether a file or folder of this name is one that this program makes for the time of its work.
    static bool IsWorkspaceName(const std::string& name);

    /// The path of a file in the folder, for those who need one; absolute.
    std::filesystem::path Path(const std::string& name) const;
    const FileDescriptor& Folder() const { return mFolder; }

private:
    const TargetFile& mTarget;
    std::string mName;
    FileDescriptor mFolder;
    FileDescriptor mLock;
};

} // namespace zonstory

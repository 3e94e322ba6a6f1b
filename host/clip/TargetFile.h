#pragma once

#include <filesystem>
#include <string>

#include <sys/stat.h>

#include "files/FileDescriptor.h"
#include "files/FileIdentity.h"

namespace zonstory {

/// A file that is to be read and perhaps replaced, held open together with its folder. All later steps go through the
/// two descriptors, so that they concern this file and no other that takes its name.
class TargetFile {
public:
    /// Finds a regular file by any of its names, and follows links to where it really is.
    /// @throws ClipError when it is missing, unreadable or no regular file.
    static TargetFile Open(const std::filesystem::path& path);
    /// As Open(), for a file that may not exist yet; its folder does.
    static TargetFile OpenOrAbsent(const std::filesystem::path& path);

    const std::filesystem::path& Path() const { return mPath; } ///< Absolute and free of links.
    std::filesystem::path Folder() const { return mPath.parent_path(); }
    std::string Name() const { return mPath.filename().native(); }

    bool Exists() const { return mExists; }
    /// Not open where it does not exist.
    const FileDescriptor& File() const { return mFile; }
    /// @pre Exists().
    const struct stat& Status() const { return mStatus; }
    const FileDescriptor& FolderDescriptor() const { return mFolder; }

    /// Lets go of the file, right before its name stands for another.
    void CloseFile() { mFile = FileDescriptor(); }

    /// Whether the name still stands for what was opened, in the same state (or still for nothing).
    bool IsUnchanged() const;

private:
    std::filesystem::path mPath;
    FileDescriptor mFolder;
    FileDescriptor mFile;
    bool mExists = false;
    struct stat mStatus {};
};

} // namespace zonstory

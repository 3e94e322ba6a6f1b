#include "clip/TargetFile.h"

#include <cstdlib>
#include <memory>

#include <fcntl.h>

#include "clip/Clip.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

// Empty, with errno set, when there is no such file.
fs::path RealPath(const fs::path& path) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? fs::path(real.get()) : fs::path();
}

void RequireRegularFile(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        throw ClipError("is a folder");
    }
    if (!S_ISREG(status.st_mode)) { // opening a pipe waits, and opening a device can do anything
        throw ClipError("is not a regular file");
    }
}

FileDescriptor OpenFolder(const fs::path& folder) {
    FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor.IsOpen()) { // a folder that may be entered but not listed
        descriptor = FileDescriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    }
    if (!descriptor.IsOpen()) {
        ThrowSystemError("cannot open its folder");
    }
    return descriptor;
}

} // namespace

TargetFile TargetFile::Open(const fs::path& path) {
    TargetFile target;
    target.mPath = RealPath(path);
    if (target.mPath.empty()) {
        ThrowSystemError("cannot be found");
    }
    if (::lstat(target.mPath.c_str(), &target.mStatus) != 0) {
        ThrowSystemError("cannot be found");
    }
    RequireRegularFile(target.mStatus);
    target.mFolder = OpenFolder(target.Folder());
    target.mFile = FileDescriptor(::openat(target.mFolder.Get(), target.Name().c_str(),
                                           O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!target.mFile.IsOpen() || ::fstat(target.mFile.Get(), &target.mStatus) != 0) {
        ThrowSystemError("cannot be read");
    }
    RequireRegularFile(target.mStatus);
    target.mExists = true;
    return target;
}

TargetFile TargetFile::OpenOrAbsent(const fs::path& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0) {
        return Open(path);
    }
    if (errno != ENOENT) {
        ThrowSystemError("cannot be found");
    }
    TargetFile target;
    const fs::path folder = RealPath(path.parent_path());
    if (folder.empty()) {
        ThrowSystemError("cannot open its folder");
    }
    target.mPath = folder / path.filename();
    target.mFolder = OpenFolder(folder);
    return target;
}

bool TargetFile::IsUnchanged() const {
    struct stat now {};
    if (::fstatat(mFolder.Get(), Name().c_str(), &now, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT && !Exists();
    }
    return Exists() && IdentityOf(now) == IdentityOf(mStatus);
}

} // namespace zonstory

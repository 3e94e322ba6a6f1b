#include "clip/Replacement.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "clip/AtRest.h"
#include "clip/Clip.h"
#include "clip/FileAttributes.h"
#include "clip/Interrupt.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

constexpr mode_t kPrivate = 0600;  // until it gets the old file's
constexpr mode_t kOrdinary = 0666; // of a new file, less what the user's mask takes away
constexpr std::size_t kLongestExtension = 8;
constexpr const char* kNotOnDisk = "cannot be written to the disk";

void Flush(const FileDescriptor& file) {
    if (::fsync(file.Get()) != 0) {
        ThrowSystemError(kNotOnDisk);
    }
}

// Not every file system can flush a folder, and what it answers then is no failure of the disk.
void FlushFolder(const FileDescriptor& folder, std::vector<std::string>& notes) {
    if (::fsync(folder.Get()) != 0 && errno != EINVAL && errno != EROFS && errno != EBADF) {
        notes.push_back("its folder could not be written to the disk: " + SystemErrorText(errno));
    }
}

// What is renamed has a name that anybody who may write here can give to another file.
void RequireSameFile(const FileDescriptor& folder, const std::string& name, const FileDescriptor& proven) {
    struct stat named {};
    struct stat held {};
    if (::fstatat(folder.Get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0 || ::fstat(proven.Get(), &held) != 0 ||
        KeyOf(named) != KeyOf(held)) {
        throw ClipError("its copy was changed by another program at the same time");
    }
}

// The same file, not for writing: else the next run would find the clip open for writing as soon as the copy has its name.
// Before the copy gets the clip's mode, which may allow nobody to read it.
FileDescriptor OpenSameFile(const FileDescriptor& folder, const std::string& name, const FileDescriptor& proven) {
    FileDescriptor held(::openat(folder.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!held.IsOpen()) {
        ThrowSystemError("cannot open its copy");
    }
    RequireSameFile(folder, name, proven);
    RequireSameFile(folder, name, held);
    return held;
}

void NoteOtherLinks(const struct stat& status, std::vector<std::string>& notes) {
    if (status.st_nlink > 1) {
        notes.push_back(fmt::format("{} other hard link{} to it keep{} the old version", status.st_nlink - 1,
                                    status.st_nlink > 2 ? "s" : "", status.st_nlink > 2 ? "" : "s"));
    }
}

// A short name in place of the file's own, which may be of any length and any bytes; with its extension, by which the
// toolkit knows formats whose first bytes do not tell.
std::string NameOfCopy(const std::filesystem::path& file) {
    const std::string extension = file.extension().native();
    const bool isPlain = extension.size() <= kLongestExtension &&
                         std::all_of(extension.begin(), extension.end(), [](unsigned char character) {
                             return character == '.' || (character < 0x80 && std::isalnum(character) != 0);
                         });
    return isPlain ? "copy" + extension : "copy";
}

} // namespace

void Replacement::Retarget(TargetFile& target) {
    if (target.Path() != mTarget->Path()) {
        throw ClipError("was changed by another program at the same time");
    }
    mTarget->CloseFile();
    mTarget = &target;
}

const FileDescriptor& Replacement::Create() {
    constexpr int kNewFile = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    mName = mWorkspace.FilePrefix() + NameOfCopy(mTarget->Path());
    const mode_t mode = mTarget->Exists() ? kPrivate : kOrdinary;
    mNew = FileDescriptor(::openat(mWorkspace.Folder().Get(), mName.c_str(), kNewFile, mode));
    if (!mNew.IsOpen()) {
        ThrowSystemError("cannot write in its folder");
    }
    return mNew;
}

std::filesystem::path Replacement::Path() const {
    return mWorkspace.FolderPath() / mName;
}

std::vector<std::string> Replacement::Commit(bool preserveTime, const std::function<void()>& confirm) {
    std::vector<std::string> notes;
    FileDescriptor held = OpenSameFile(mWorkspace.Folder(), mName, mNew);
    if (mTarget->Exists()) {
        notes = CopyAttributes(mTarget->File(), mTarget->Status(), mNew);
        NoteOtherLinks(mTarget->Status(), notes);
        if (preserveTime) {
            CopyTimes(mTarget->Status(), mNew);
        }
    }
    Flush(mNew);
    ThrowIfInterrupted();
    if (!mNew.Close()) {
        ThrowSystemError(kNotOnDisk);
    }
    mNew = std::move(held);
    confirm();
    TakeName();
    FlushFolder(mTarget->FolderDescriptor(), notes);
    return notes;
}

std::vector<std::string> Replacement::Remove(const std::function<void()>& confirm) {
    std::vector<std::string> notes;
    confirm();
    RequireUnchanged(*mTarget);
    mTarget->CloseFile();
    if (::unlinkat(mTarget->FolderDescriptor().Get(), mTarget->Name().c_str(), 0) != 0) {
        ThrowSystemError("cannot be removed");
    }
    FlushFolder(mTarget->FolderDescriptor(), notes);
    return notes;
}

void Replacement::TakeName() {
    constexpr const char* kAttempt = "cannot be replaced";
    RequireUnchanged(*mTarget);
    RequireSameFile(mWorkspace.Folder(), mName, mNew);
    mTarget->CloseFile(); // over a file that is open, no name is given on SMB, and on NFS the old version would stay
    const int from = mWorkspace.Folder().Get();
    const int to = mTarget->FolderDescriptor().Get();
    const std::string name = mTarget->Name();
    if (!mTarget
             ->Exists()) { // nothing that appears in this very moment is written over, where the system can promise it
        if (::renameat2(from, mName.c_str(), to, name.c_str(), RENAME_NOREPLACE) == 0) {
            return;
        }
        if (errno != EINVAL && errno != ENOSYS) {
            ThrowSystemError(kAttempt);
        }
    }
    if (::renameat(from, mName.c_str(), to, name.c_str()) != 0) {
        ThrowSystemError(kAttempt);
    }
}

} // namespace zonstory

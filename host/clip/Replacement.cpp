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
#include "clip/CopyFile.h"
#include "clip/FileAttributes.h"
#include "clip/Interrupt.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

constexpr mode_t kPrivate = 0600;  // until it gets the old file's
constexpr mode_t kOrdinary = 0666; // of a new file, less what the user's mask takes away
constexpr std::size_t kLongestExtension = 8;

FileDescriptor Create(const FileDescriptor& folder, const std::string& name, mode_t mode) {
    FileDescriptor file(::openat(folder.Get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file.IsOpen()) {
        ThrowSystemError("cannot write in its folder");
    }
    return file;
}

void Flush(const FileDescriptor& file) {
    if (::fsync(file.Get()) != 0) {
        ThrowSystemError("cannot be written to the disk");
    }
}

// Not every file system can flush a folder, and what it answers then is no failure of the disk.
void FlushFolder(const FileDescriptor& folder, std::vector<std::string>& notes) {
    if (::fsync(folder.Get()) != 0 && errno != EINVAL && errno != EROFS && errno != EBADF) {
        notes.push_back("its folder could not be written to the disk: " + SystemErrorText(errno));
    }
}

// Starts writing to the disk what is in memory, so that the flush at the end finds most of it done. A small file would be
// written twice, since the toolkit changes it at once.
void StartFlush(const FileDescriptor& file, std::int64_t size) {
    constexpr std::int64_t kSmall = std::int64_t{8} << 20;
    constexpr off_t kToTheEnd = 0;
    if (size <= kSmall) {
        return;
    }
    ::sync_file_range(file.Get(), 0, kToTheEnd, SYNC_FILE_RANGE_WRITE);
}

void NoteOtherLinks(const struct stat& status, std::vector<std::string>& notes) {
    if (status.st_nlink > 1) {
        notes.push_back(fmt::format("{} other hard link{} to it keep{} the old version", status.st_nlink - 1,
                                    status.st_nlink > 2 ? "s" : "", status.st_nlink > 2 ? "" : "s"));
    }
}

} // namespace

// A short name in place of the file's own, which may be of any length and any bytes; with its extension, by which the
// toolkit knows formats whose first bytes do not tell.
std::string Replacement::FileName() const {
    const std::string extension = mTarget.Path().extension().native();
    const bool isPlain = extension.size() <= kLongestExtension &&
                         std::all_of(extension.begin(), extension.end(), [](unsigned char character) {
                             return character == '.' || (character < 0x80 && std::isalnum(character) != 0);
                         });
    return mWorkspace.FilePrefix() + (isPlain ? "copy" + extension : "copy");
}

std::filesystem::path Replacement::Path() const {
    return mWorkspace.FolderPath() / FileName();
}

void Replacement::CopyTarget(int spaceFactor) {
    const FileDescriptor copy = Create(mWorkspace.Folder(), FileName(), kPrivate);
    CopyFile(mTarget.File(), copy, mTarget.Status().st_size, mTarget.FolderDescriptor(), spaceFactor);
    StartFlush(copy, mTarget.Status().st_size);
}

void Replacement::Write(const std::string& bytes) {
    const FileDescriptor file = Create(mWorkspace.Folder(), FileName(), mTarget.Exists() ? kPrivate : kOrdinary);
    WriteAll(file, bytes);
}

void Replacement::Discard() {
    ::unlinkat(mWorkspace.Folder().Get(), FileName().c_str(), 0);
}

FileDescriptor Replacement::Open(int flags) const {
    FileDescriptor file(::openat(mWorkspace.Folder().Get(), FileName().c_str(), flags | O_NOFOLLOW | O_CLOEXEC));
    if (!file.IsOpen()) {
        ThrowSystemError("cannot open its copy");
    }
    return file;
}

std::vector<std::string> Replacement::Commit(bool preserveTime) {
    std::vector<std::string> notes;
    {
        const FileDescriptor file = Open(O_RDWR);
        if (mTarget.Exists()) {
            notes = CopyAttributes(mTarget.File(), mTarget.Status(), file);
            NoteOtherLinks(mTarget.Status(), notes);
        }
        if (mTarget.Exists() && preserveTime) {
            CopyTimes(mTarget.Status(), file);
        }
        Flush(file);
    }
    ThrowIfInterrupted();
    TakeName();
    FlushFolder(mTarget.FolderDescriptor(), notes);
    return notes;
}

void Replacement::TakeName() const {
    constexpr const char* kAttempt = "cannot be replaced";
    RequireUnchanged(mTarget);
    mTarget.CloseFile(); // over a file that is open, no name is given on SMB, and on NFS the old version would stay
    const int from = mWorkspace.Folder().Get();
    const int to = mTarget.FolderDescriptor().Get();
    const std::string name = mTarget.Name();
    if (!mTarget
             .Exists()) { // nothing that appears in this very moment is written over, where the system can promise it
        if (::renameat2(from, FileName().c_str(), to, name.c_str(), RENAME_NOREPLACE) == 0) {
            return;
        }
        if (errno != EINVAL && errno != ENOSYS) {
            ThrowSystemError(kAttempt);
        }
    }
    if (::renameat(from, FileName().c_str(), to, name.c_str()) != 0) {
        ThrowSystemError(kAttempt);
    }
}

} // namespace zonstory

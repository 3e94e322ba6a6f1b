#include "clip/AtRest.h"

#include <algorithm>
#include <csignal>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "clip/Clip.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

// The system grants a lease for reading when nobody has the file open for writing. It grants none at all to those who do
// not own the file, nor on network file systems; then only a change tells.
bool HasWriter(const FileDescriptor& file) {
    ::fcntl(file.Get(), F_SETSIG, SIGURG); // for who opens it in this very moment: the usual one would end the program
    if (::fcntl(file.Get(), F_SETLEASE, F_RDLCK) != 0) {
        return errno == EAGAIN;
    }
    ::fcntl(file.Get(), F_SETLEASE, F_UNLCK);
    return false;
}

void RequireWritable(const TargetFile& target) {
    constexpr mode_t kAnybodyMayWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    constexpr const char* kRefusal = "is protected against writing";
    if ((target.Status().st_mode & kAnybodyMayWrite) == 0) {
        throw ClipError(kRefusal);
    }
    if (::faccessat(target.FolderDescriptor().Get(), target.Name().c_str(), W_OK, AT_EACCESS) != 0) {
        ThrowSystemError(kRefusal);
    }
}

// Not asked for, nothing is refused: not even a time that a file server's clock has put into the future.
void RequireSettled(const TargetFile& target, std::chrono::seconds settle) {
    const std::time_t last = std::max(target.Status().st_mtim.tv_sec, target.Status().st_ctim.tv_sec);
    const std::chrono::seconds ago(std::time(nullptr) - last);
    if (settle.count() > 0 && ago < settle) {
        throw ClipError(
            fmt::format("was changed {} seconds ago, less than {}", std::max<long>(ago.count(), 0), settle.count()));
    }
}

} // namespace

void RequireAtRest(const TargetFile& target, std::chrono::seconds settle) {
    if (!target.Exists()) {
        return;
    }
    RequireWritable(target);
    RequireSettled(target, settle);
    if (HasWriter(target.File())) {
        throw ClipError("is open for writing in another program");
    }
}

void RequireUnchanged(const TargetFile& target) {
    if (!target.IsUnchanged()) {
        throw ClipError("was changed by another program at the same time");
    }
    if (target.Exists() && HasWriter(target.File())) {
        throw ClipError("was opened for writing by another program at the same time");
    }
}

} // namespace zonstory

#include "clip/FileAttributes.h"

#include <cstring>

#include <sys/xattr.h>
#include <unistd.h>

#include "clip/Clip.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

constexpr mode_t kModeBits = 07777;

// Calls `read` with a buffer that grows until what there is fits in.
template <typename Read>
std::vector<char> ReadWhole(Read read) {
    while (true) {
        const ssize_t needed = read(nullptr, 0);
        if (needed <= 0) {
            return {};
        }
        std::vector<char> bytes(static_cast<std::size_t>(needed));
        const ssize_t got = read(bytes.data(), bytes.size());
        if (got >= 0) {
            bytes.resize(static_cast<std::size_t>(got));
            return bytes;
        }
        if (errno != ERANGE) {
            return {};
        }
    }
}

bool CopyOneExtendedAttribute(const FileDescriptor& from, const FileDescriptor& to, const char* name) {
    const auto read = [&](char* bytes, std::size_t size) { return ::fgetxattr(from.Get(), name, bytes, size); };
    const std::vector<char> value = ReadWhole(read);
    return ::fsetxattr(to.Get(), name, value.data(), value.size(), 0) == 0;
}

void CopyExtendedAttributes(const FileDescriptor& from, const FileDescriptor& to, std::vector<std::string>& notes) {
    const auto list = [&](char* names, std::size_t size) { return ::flistxattr(from.Get(), names, size); };
    const std::vector<char> names = ReadWhole(list);
    for (std::size_t start = 0; start < names.size(); start += std::strlen(&names[start]) + 1) {
        if (const char* const name = &names[start]; !CopyOneExtendedAttribute(from, to, name)) {
            notes.push_back(std::string("its extended attribute ") + name + " could not be kept");
        }
    }
}

void CopyOwner(const struct stat& status, const FileDescriptor& to, std::vector<std::string>& notes) {
    struct stat own {};
    if (::fstat(to.Get(), &own) == 0 && own.st_uid == status.st_uid && own.st_gid == status.st_gid) {
        return;
    }
    if (::fchown(to.Get(), status.st_uid, status.st_gid) == 0) {
        return;
    }
    const bool keepsGroup = ::fchown(to.Get(), static_cast<uid_t>(-1), status.st_gid) == 0;
    notes.emplace_back(keepsGroup ? "its owner could not be kept" : "its owner and group could not be kept");
}

} // namespace

// The owner first, since a change of owner takes mode bits and some attributes away again.
std::vector<std::string> CopyAttributes(const FileDescriptor& from, const struct stat& status,
                                        const FileDescriptor& to) {
    std::vector<std::string> notes;
    CopyOwner(status, to, notes);
    CopyExtendedAttributes(from, to, notes);
    if (::fchmod(to.Get(), status.st_mode & kModeBits) != 0) {
        ThrowSystemError("cannot keep its mode");
    }
    return notes;
}

void CopyTimes(const struct stat& status, const FileDescriptor& to) {
    const timespec times[] = {status.st_atim, status.st_mtim};
    if (::futimens(to.Get(), times) != 0) {
        ThrowSystemError("cannot keep its time");
    }
}

} // namespace zonstory

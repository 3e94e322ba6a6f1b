#include "clip/FileAttributes.h"

#include <cstring>
#include <optional>
#include <set>

#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "clip/Clip.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

constexpr mode_t kModeBits = 07777;

// Calls `read` with a buffer that grows until what there is fits in.
// @return Nothing, with errno set, where it fails.
template <typename Read>
std::optional<std::vector<char>> ReadWhole(Read read) {
    while (true) {
        const ssize_t needed = read(nullptr, 0);
        if (needed < 0) {
            return std::nullopt;
        }
        std::vector<char> bytes(static_cast<std::size_t>(needed));
        const ssize_t got = needed == 0 ? 0 : read(bytes.data(), bytes.size());
        if (got >= 0) {
            bytes.resize(static_cast<std::size_t>(got));
            return bytes;
        }
        if (errno != ERANGE) {
            return std::nullopt;
        }
    }
}

/// A file's extended attributes, by name.
class ExtendedAttributes {
public:
    explicit ExtendedAttributes(const FileDescriptor& file) : mFile(file) {
        const auto list = [&](char* names, std::size_t size) { return ::flistxattr(file.Get(), names, size); };
        const std::optional<std::vector<char>> names = ReadWhole(list);
        mIsKnown = names || errno == ENOTSUP; // where there are none, there is none to lose
        for (std::size_t start = 0; names && start < names->size(); start += std::strlen(&(*names)[start]) + 1) {
            mNames.insert(&(*names)[start]);
        }
    }

    bool IsKnown() const { return mIsKnown; }
    const std::set<std::string>& Names() const { return mNames; }

    bool Copy(const std::string& name, const FileDescriptor& to) const {
        const auto read = [&](char* bytes, std::size_t size) {
            return ::fgetxattr(mFile.Get(), name.c_str(), bytes, size);
        };
        const std::optional<std::vector<char>> value = ReadWhole(read);
        return value && ::fsetxattr(to.Get(), name.c_str(), value->data(), value->size(), 0) == 0;
    }

private:
    const FileDescriptor& mFile;
    bool mIsKnown = false;
    std::set<std::string> mNames;
};

// A folder may give what is made in it an access list that the old file did not have. Labels are the system's own.
void RemoveOthers(const FileDescriptor& to, const std::set<std::string>& kept, std::vector<std::string>& notes) {
    const ExtendedAttributes now(to);
    for (const std::string& name : now.Names()) {
        if (!kept.contains(name) && !name.starts_with("security.") && ::fremovexattr(to.Get(), name.c_str()) != 0) {
            notes.push_back("has got the extended attribute " + name + " from its folder");
        }
    }
}

void CopyExtendedAttributes(const FileDescriptor& from, const FileDescriptor& to, std::vector<std::string>& notes) {
    const ExtendedAttributes attributes(from);
    if (!attributes.IsKnown()) {
        notes.push_back("its extended attributes could not be read: " + SystemErrorText());
        return;
    }
    for (const std::string& name : attributes.Names()) {
        if (!attributes.Copy(name, to)) {
            notes.push_back("its extended attribute " + name + " could not be kept: " + SystemErrorText());
        }
    }
    RemoveOthers(to, attributes.Names(), notes);
}

struct FileFlag {
    int bit;
    const char* name;
};

// As chattr has them. One that may not be changed cannot be replaced at all.
constexpr FileFlag kFileFlags[] = {{FS_APPEND_FL, "append only"},     {FS_NODUMP_FL, "no dump"},
                                   {FS_NOATIME_FL, "no access time"}, {FS_SYNC_FL, "synchronous"},
                                   {FS_COMPR_FL, "compressed"},       {FS_NOCOW_FL, "no copy on write"},
                                   {FS_SECRM_FL, "secure deletion"},  {FS_UNRM_FL, "undeletable"}};

int FlagsOf(const FileDescriptor& file) {
    int flags = 0;
    return ::ioctl(file.Get(), FS_IOC_GETFLAGS, &flags) == 0 ? flags : 0;
}

void NoteDroppedFlags(const FileDescriptor& from, const FileDescriptor& to, std::vector<std::string>& notes) {
    const int dropped = FlagsOf(from) & ~FlagsOf(to);
    for (const FileFlag& flag : kFileFlags) {
        if ((dropped & flag.bit) != 0) {
            notes.push_back(std::string("its file flag \"") + flag.name + "\" was not kept");
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
    NoteDroppedFlags(from, to, notes);
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

#include "clip/Leftovers.h"

#include <algorithm>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "clip/WorkLock.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

std::vector<std::string> NamesIn(const FileDescriptor& folder) {
    std::vector<std::string> names;
    const int copy = ::openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(copy >= 0 ? ::fdopendir(copy) : nullptr, &::closedir);
    while (const dirent* entry = listing ? ::readdir(listing.get()) : nullptr) {
        names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

Leftover LookAt(const FileDescriptor& folder, const std::string& name, const std::string& holder) {
    struct stat status {};
    ::fstatat(folder.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
    return {name, static_cast<std::uint64_t>(status.st_size), holder, {}};
}

/// The files of one clip, from `first` on.
class Group {
public:
    Group(const FileDescriptor& folder, const std::string& prefix) : mFolder(folder), mPrefix(prefix) {
        mAttempt = TryLock(folder, prefix, mLock);
    }
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;
    ~Group() {
        if (mAttempt == LockAttempt::Locked) {
            ::unlinkat(mFolder.Get(), LockName(mPrefix).c_str(), 0);
        }
    }

    Leftover Treat(const std::string& name, bool dryRun) const {
        Leftover leftover = LookAt(mFolder, name, mAttempt == LockAttempt::Locked ? "" : HolderOf(mLock));
        if (leftover.holder.empty() && !dryRun && ::unlinkat(mFolder.Get(), name.c_str(), 0) != 0) {
            leftover.problem = SystemErrorText();
        }
        return leftover;
    }

private:
    const FileDescriptor& mFolder;
    std::string mPrefix;
    FileDescriptor mLock;
    LockAttempt mAttempt;
};

} // namespace

std::vector<Leftover> RemoveLeftovers(const FileDescriptor& folder, bool dryRun) {
    std::vector<Leftover> leftovers;
    const std::vector<std::string> names = NamesIn(folder);
    for (auto name = names.begin(); name != names.end();) {
        const std::string prefix = WorkPrefixOf(*name);
        if (prefix.empty()) {
            ++name;
            continue;
        }
        const Group group(folder, prefix);
        for (; name != names.end() && name->starts_with(prefix); ++name) {
            if (*name != LockName(prefix)) {
                leftovers.push_back(group.Treat(*name, dryRun));
            }
        }
    }
    return leftovers;
}

void RemoveFiles(const FileDescriptor& folder, const std::string& prefix) {
    for (const std::string& name : NamesIn(folder)) {
        if (name.starts_with(prefix) && name != LockName(prefix)) {
            ::unlinkat(folder.Get(), name.c_str(), 0);
        }
    }
}

} // namespace zonstory

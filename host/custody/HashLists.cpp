#include "custody/HashLists.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <utf8proc.h>

#include "custody/HashListNames.h"
#include "files/FileError.h"
#include "files/FileSize.h"
#include "files/ReadFile.h"
#include "text/AsciiText.h"
#include "text/ForeignText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLargestList = std::uint64_t{256} << 20; // of some 100,000 clips an MHL has 40 MB
constexpr std::size_t kMostNames = 2'000'000;

// Equal for names that differ in case or in how accents are made up alone.
std::string Folded(const std::string& name) {
    utf8proc_uint8_t* folded = nullptr;
    const auto options = static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD);
    const utf8proc_ssize_t size = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(name.data()),
                                               static_cast<utf8proc_ssize_t>(name.size()), &folded, options);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
    return size < 0 ? LowerCase(name)
                    : std::string(reinterpret_cast<const char*>(folded), static_cast<std::size_t>(size));
}

// As lists and the file system both come to be compared.
std::string KeyOf(const std::string& name) {
    return Folded(fs::path(name).lexically_normal().native());
}

std::string KeyOfFile(const std::string& path) {
    std::string name = ForeignToUTF8(path);
    std::replace(name.begin(), name.end(), '\\', '/'); // as it is done with names in lists
    return KeyOf(name);
}

// Also the root, above which there is nothing.
bool IsMountPoint(const fs::path& folder) {
    struct stat status {};
    struct stat above {};
    return folder == folder.parent_path() || ::stat(folder.c_str(), &status) != 0 ||
           ::stat(folder.parent_path().c_str(), &above) != 0 || status.st_dev != above.st_dev;
}

std::string ReadBounded(const fs::path& list) {
    const FileDescriptor file = OpenToRead(list.native());
    if (FileSize(file) > kLargestList) {
        throw FileError("is too large to be one");
    }
    return ReadAll(file);
}

// The regular files in a folder that are called as lists are, and, of the ASC's, those in the folder of its own.
std::vector<fs::path> ListsIn(const fs::path& folder, bool isLookingForHistory) {
    constexpr std::string_view kHistory = "ascmhl";
    std::vector<fs::path> lists;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code ignored;
        const std::string name = entry->path().filename().native();
        if (isLookingForHistory && EqualIgnoringCase(name, kHistory) && entry->is_directory(ignored)) {
            const std::vector<fs::path> more = ListsIn(entry->path(), false);
            lists.insert(lists.end(), more.begin(), more.end());
        } else if (KindOfHashList(name) != HashListKind::None && entry->is_regular_file(ignored)) {
            lists.push_back(entry->path());
        }
    }
    std::sort(lists.begin(), lists.end()); // which of several is told does not hang on the file system
    return lists;
}

} // namespace

std::optional<SealingList> HashLists::Find(const fs::path& file) {
    const std::lock_guard lock(mMutex);
    for (const Folder* folder = FindFolder(file.parent_path()); folder != nullptr; folder = folder->above) {
        if (std::optional<SealingList> found = FindIn(*folder, file)) {
            return found;
        }
    }
    return std::nullopt;
}

// The folder with all above it, each looked into when it is new.
HashLists::Folder* HashLists::FindFolder(fs::path path) {
    std::vector<fs::path> fresh;
    Folder* above = nullptr;
    while (true) {
        if (const auto known = mFolders.find(path.native()); known != mFolders.end()) {
            above = known->second.get();
            break;
        }
        fresh.push_back(path);
        if (IsMountPoint(path)) {
            break;
        }
        path = path.parent_path();
    }
    std::reverse(fresh.begin(), fresh.end()); // from the top
    for (const fs::path& next : fresh) {
        auto folder = std::make_unique<Folder>();
        folder->path = next;
        folder->above = above;
        ReadLists(*folder);
        above = folder.get();
        mFolders.emplace(next.native(), std::move(folder));
    }
    return above;
}

void HashLists::ReadLists(Folder& folder) {
    for (const fs::path& list : ListsIn(folder.path, true)) {
        try {
            ReadList(list, folder);
        } catch (const std::runtime_error& error) { // FileError, HashListError
            folder.unread = folder.unread ? folder.unread : SealingList{list, error.what()};
        }
    }
}

void HashLists::ReadList(const fs::path& list, Folder& folder) {
    const std::string name = list.filename().native();
    const auto position = static_cast<std::uint32_t>(folder.lists.size());
    folder.lists.push_back(list);
    ReadHashListNames(ReadBounded(list), KindOfHashList(name), name, [&](std::string&& sealed) {
        if (folder.names.size() >= kMostNames) {
            throw HashListError("names more files than a folder has");
        }
        folder.names.try_emplace(KeyOf(sealed), position);
    });
}

std::optional<SealingList> HashLists::FindIn(const Folder& folder, const fs::path& file) {
    for (const std::string& path : {file.lexically_relative(folder.path).native(), file.native()}) {
        if (folder.names.empty()) {
            break;
        }
        if (const auto found = folder.names.find(KeyOfFile(path)); found != folder.names.end()) {
            return SealingList{folder.lists[found->second], {}};
        }
    }
    return folder.unread;
}

} // namespace zonstory

#include "clip/FindClips.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

#include "clip/FrameSequence.h"
#include "clip/Sidecar.h"
#include "files/FileIdentity.h"
#include "files/SystemError.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

// Sorted, lower case.
constexpr std::array<std::string_view, 49> kMediaExtensions = {
    "3g2", "3gp", "aac", "aif",  "aifc", "aiff", "ari", "arx",  "asf", "avi", "braw", "bwf", "cin",
    "crm", "dpx", "dv",  "exr",  "f4v",  "flac", "flv", "gxf",  "lxf", "m2t", "m2ts", "m2v", "m4a",
    "m4v", "mkv", "mov", "mp2",  "mp3",  "mp4",  "mpe", "mpeg", "mpg", "mts", "mxf",  "oga", "ogg",
    "ogv", "qt",  "r3d", "rf64", "ts",   "vob",  "wav", "webm", "wma", "wmv"};
static_assert(std::is_sorted(kMediaExtensions.begin(), kMediaExtensions.end()));

using Folder = std::unique_ptr<DIR, int (*)(DIR*)>;

bool IsHidden(const std::string& name) {
    return name.front() == '.';
}

class Search {
public:
    explicit Search(bool recursive) : mRecursive(recursive) {}

    void AddNamed(const fs::path& path) {
        struct stat status {};
        if (::stat(path.c_str(), &status) != 0) {
            Refuse(path, errno);
        } else if (S_ISDIR(status.st_mode)) {
            AddFolder(path, status);
        } else { // whatever it is: when its turn comes, it will be said what is wrong with it
            AddFile(path, status);
        }
    }

    FoundClips Take() {
        PassOverSidecars();
        return std::move(mList);
    }

private:
    void Refuse(const fs::path& path, int error) { mList.errors.push_back({path, SystemErrorText(error)}); }

    // By what it is rather than by its name: two links to it are one clip, which is written once. Of a sequence of frames
    // the first stands for all.
    void AddFile(const fs::path& path, const struct stat& status) {
        const fs::path name = SequenceName(path);
        const bool isNew = name == path || mSequences.insert(name.lexically_normal().native()).second;
        if (isNew && mFiles.insert(KeyOf(status)).second) {
            mList.clips.push_back(path);
        }
    }

    void AddFolder(const fs::path& path, const struct stat& status) {
        if (!mFolders.insert(KeyOf(status)).second) {
            return;
        }
        std::vector<std::string> names;
        if (!ReadNames(path, names)) {
            return;
        }
        std::vector<std::pair<fs::path, struct stat>> folders;
        for (const std::string& name : names) {
            AddEntry(path / name, folders);
        }
        for (const auto& [folder, folderStatus] : folders) { // below the folder's own files
            AddFolder(folder, folderStatus);
        }
    }

    // A link that leads nowhere is no clip.
    void AddEntry(const fs::path& path, std::vector<std::pair<fs::path, struct stat>>& folders) {
        struct stat status {};
        const bool isMedia = IsMediaName(path);
        if ((!isMedia && !mRecursive) || ::stat(path.c_str(), &status) != 0) {
            return;
        }
        if (S_ISREG(status.st_mode) && isMedia) {
            AddFile(path, status);
        } else if (S_ISDIR(status.st_mode) && mRecursive) {
            folders.emplace_back(path, status);
        }
    }

    // Both names that a sidecar may have, clip.xmp and clip.mov.xmp, without the extension lead to the clip.
    void PassOverSidecars() {
        std::unordered_set<std::string> owners;
        for (const fs::path& clip : mList.clips) {
            if (!IsSidecarName(clip)) {
                fs::path owner = SequenceName(clip).lexically_normal();
                owners.insert(owner.native());
                owners.insert(owner.replace_extension().native());
            }
        }
        std::erase_if(mList.clips, [&](const fs::path& clip) {
            return IsSidecarName(clip) &&
                   owners.contains(fs::path(clip).replace_extension().lexically_normal().native());
        });
    }

    bool ReadNames(const fs::path& path, std::vector<std::string>& names) {
        const Folder folder(::opendir(path.c_str()), &::closedir);
        if (!folder) {
            Refuse(path, errno);
            return false;
        }
        errno = 0;
        while (const dirent* entry = ::readdir(folder.get())) {
            if (std::string name = entry->d_name; !IsHidden(name)) {
                names.push_back(std::move(name));
            }
            errno = 0;
        }
        if (errno != 0) {
            Refuse(path, errno);
        }
        std::sort(names.begin(), names.end());
        return true;
    }

    bool mRecursive;
    FoundClips mList;
    std::unordered_set<FileKey, FileKeyHash> mFiles;
    std::unordered_set<FileKey, FileKeyHash> mFolders;
    std::unordered_set<std::string> mSequences;
};

} // namespace

bool IsMediaName(const fs::path& file) {
    std::string extension = file.extension().native();
    if (extension.empty()) {
        return false;
    }
    extension.erase(0, 1);
    return std::binary_search(kMediaExtensions.begin(), kMediaExtensions.end(), LowerCase(std::move(extension)));
}

FoundClips FindClips(const std::vector<fs::path>& paths, bool recursive) {
    Search search(recursive);
    for (const fs::path& path : paths) {
        search.AddNamed(path);
    }
    return search.Take();
}

} // namespace zonstory

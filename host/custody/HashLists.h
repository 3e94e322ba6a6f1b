#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace zonstory {

/// A list that holds a file's checksum, or that may hold it.
struct SealingList {
    std::filesystem::path path; ///< Absolute.
    std::string problem; ///< Why nobody can tell which files it names: "is no hash list". Empty where it names this.
};

/// Which files are sealed by checksums: named by a list in their folder or in one above it, up to where their file system
/// is mounted. In a folder "ascmhl" lie the lists of the folder around it. A list that cannot be read is taken to name
/// every file beneath it.
///
/// Names are compared as people read them, whatever the case and the form of their accents: a list may come from a machine
/// that keeps neither. Each folder is looked into once and each list is read once, when a file beneath them is first asked
/// about. May be asked on any thread.
class HashLists {
public:
    /// @param file  Absolute and free of links; its folder exists.
    /// @return Nothing for a file that no list seals. Folders that may not be looked into have no lists.
    std::optional<SealingList> Find(const std::filesystem::path& file);

private:
    struct Folder {
        std::filesystem::path path;
        Folder* above = nullptr;
        std::vector<std::filesystem::path> lists;
        std::unordered_map<std::string, std::uint32_t>
            names;                         ///< From this folder on, or absolute; to one of the lists.
        std::optional<SealingList> unread; ///< The first list that could not be read.
    };

    Folder* FindFolder(std::filesystem::path path);
    static void ReadLists(Folder& folder);
    static void ReadList(const std::filesystem::path& list, Folder& folder);
    static std::optional<SealingList> FindIn(const Folder& folder, const std::filesystem::path& file);

    std::mutex mMutex;
    std::unordered_map<std::string, std::unique_ptr<Folder>> mFolders;
};

} // namespace zonstory

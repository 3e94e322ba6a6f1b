#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zonstory {

/// Links from a page to clips, so that both can be moved or copied together.
class ClipLinks {
public:
    /// @param folder  Of the page; empty for the working directory.
    explicit ClipLinks(const std::filesystem::path& folder);

    /// A relative reference, percent-encoded: "rushes/A%20001.mov", "../rushes/A001.mov". Empty for a clip that lies
    /// neither under the page's folder nor under the one above it: the way there would tell of folders that have nothing
    /// to do with either.
    std::string To(const std::filesystem::path& clip);

private:
    const std::filesystem::path& RealFolder(const std::filesystem::path& folder);

    std::map<std::filesystem::path, std::filesystem::path> mFolders; // many clips lie in few
    std::filesystem::path mFolder;
};

} // namespace zonstory

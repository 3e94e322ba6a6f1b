#include "commands/ClipLinks.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

namespace zonstory {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";

// Also colons, so that no folder's name reads as a scheme.
std::string PercentEncoded(const std::string& path) {
    std::string encoded;
    for (const char byte : path) {
        encoded += kPlain.find(byte) != std::string_view::npos
                       ? std::string(1, byte)
                       : fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    }
    return encoded;
}

} // namespace

ClipLinks::ClipLinks(const fs::path& folder) : mFolder(RealFolder(folder.empty() ? fs::path(".") : folder)) {}

std::string ClipLinks::To(const fs::path& clip) {
    const fs::path parent = clip.parent_path();
    const fs::path way =
        (RealFolder(parent.empty() ? fs::path(".") : parent) / clip.filename()).lexically_relative(mFolder);
    const auto up = std::count(way.begin(), way.end(), fs::path(".."));
    return way.empty() || up > 1 ? "" : PercentEncoded(way.string());
}

const fs::path& ClipLinks::RealFolder(const fs::path& folder) {
    const auto [found, isNew] = mFolders.try_emplace(folder);
    if (isNew) {
        std::error_code ignored; // of a folder that is gone meanwhile
        found->second = fs::weakly_canonical(fs::absolute(folder, ignored), ignored);
    }
    return found->second;
}

} // namespace zonstory

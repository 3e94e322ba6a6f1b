#pragma once

#include <compare>
#include <cstdint>

#include <sys/stat.h>

namespace zonstory {

/// Which file it is, and in which state. Two equal identities mean that nobody replaced or wrote the file in between;
/// the change time also betrays a writer that sets the modification time back.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modified = 0; ///< Nanoseconds, as the next.
    std::int64_t changed = 0;

    auto operator<=>(const FileIdentity&) const = default;
};

inline FileIdentity IdentityOf(const struct stat& status) {
    constexpr std::int64_t kSecond = 1'000'000'000;
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec * kSecond + status.st_mtim.tv_nsec,
            status.st_ctim.tv_sec * kSecond + status.st_ctim.tv_nsec};
}

} // namespace zonstory

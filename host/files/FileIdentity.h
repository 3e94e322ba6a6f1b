#pragma once

#include <cstddef>
#include <cstdint>

#include <sys/stat.h>

namespace zonstory {

/// Which file it is, by whatever name. Only while it exists: a new file may get the number of one that is gone.
struct FileKey {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileKey&) const = default;
};

struct FileKeyHash {
    std::size_t operator()(const FileKey& key) const {
        constexpr std::size_t kSpread = 0x9E3779B97F4A7C15;
        return (key.inode + key.device * kSpread) * kSpread;
    }
};

/// Which file it is, and in which state. Two equal identities mean that nobody replaced or wrote the file in between;
/// the change time also betrays a writer that sets the modification time back.
struct FileIdentity {
    FileKey key;
    std::int64_t size = 0;
    std::int64_t modified = 0; ///< Nanoseconds, as the next.
    std::int64_t changed = 0;

    bool operator==(const FileIdentity&) const = default;
};

inline FileKey KeyOf(const struct stat& status) {
    return {status.st_dev, status.st_ino};
}

inline FileIdentity IdentityOf(const struct stat& status) {
    constexpr std::int64_t kSecond = 1'000'000'000;
    return {KeyOf(status), status.st_size, status.st_mtim.tv_sec * kSecond + status.st_mtim.tv_nsec,
            status.st_ctim.tv_sec * kSecond + status.st_ctim.tv_nsec};
}

} // namespace zonstory

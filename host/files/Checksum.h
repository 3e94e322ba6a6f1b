#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zonstory {

/// How bytes become a checksum: the ways that data managers use.
enum class HashKind { MD5, SHA1, SHA256, XXH64, XXH128 };

inline constexpr std::array kHashKinds = {HashKind::MD5, HashKind::SHA1, HashKind::SHA256, HashKind::XXH64,
                                          HashKind::XXH128};

/// "md5", "sha1", "sha256", "xxh64", "xxh128".
const char* HashName(HashKind kind);
std::optional<HashKind> HashNamed(std::string_view name);

/// A checksum as it grows, for one thread.
class Hasher {
public:
    explicit Hasher(HashKind kind);
    Hasher(Hasher&& other) noexcept;
    Hasher& operator=(Hasher&&) = delete;
    ~Hasher();

    void Add(std::string_view bytes);

    /// The checksum of all that was added, behind its kind: "xxh128:" and lower-case digits, as `xxhsum` and `md5sum` print
    /// them. Called once, last.
    std::string Finish();

    class Algorithm;

private:
    HashKind mKind;
    std::unique_ptr<Algorithm> mAlgorithm;
};

/// The kind in front of a checksum; nothing for a text that is none.
std::optional<HashKind> KindOfChecksum(std::string_view checksum);

} // namespace zonstory

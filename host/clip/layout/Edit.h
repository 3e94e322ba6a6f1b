#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zonstory {

/// A run of bytes of a file.
struct ByteRange {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;

    std::uint64_t End() const { return offset + size; }
    bool operator==(const ByteRange&) const = default;
};

/// One change of a file: at `offset` of the old version `taken` bytes go and `put` comes in their place. What lies behind
/// moves by the difference.
struct Edit {
    std::uint64_t offset = 0;
    std::uint64_t taken = 0;
    std::string put;

    bool operator==(const Edit&) const = default;
};

/// All that makes a new version of a file out of the old: in ascending order, none touching another. Empty for a version
/// that is the same.
using EditList = std::vector<Edit>;

} // namespace zonstory

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "clip/layout/Edit.h"

namespace zonstory {

/// Where the bytes of the old version of a file stand in the new one.
class PositionMap {
public:
    /// @param edits  In ascending order; they may touch each other.
    /// @param size   Of the old version. What is put or taken at its end moves nothing, not even positions
    ///               behind it, which name no byte.
    PositionMap(const EditList& edits, std::uint64_t size);

    /// Of the byte at a position; nothing when the edits take it away or put another in its place.
    std::optional<std::uint64_t> At(std::uint64_t position) const;

    /// Of the end of a run of bytes: what is put right there does not belong to the run.
    std::optional<std::uint64_t> EndAt(std::uint64_t position) const;

private:
    struct Step {
        std::uint64_t begin;
        std::uint64_t end;
        std::uint64_t moved; // of all behind `end`, modulo 2^64
    };
    std::optional<std::uint64_t> Behind(std::vector<Step>::const_iterator next, std::uint64_t position) const;

    std::vector<Step> mSteps;
};

} // namespace zonstory

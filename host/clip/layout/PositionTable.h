#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "clip/layout/PositionMap.h"
#include "files/ByteReader.h"

namespace zonstory {

/// Fields of an index that lead to places in the file, at equal distances from each other; read when they are asked for.
struct PositionTable {
    enum class Form {
        FromBase,       ///< Each counts from `base`.
        FromEnd,        ///< The same, and `base` is where a box ends, not where the next one begins.
        SignedFromBase, ///< The same, and may lead to what lies in front of it.
        Lengths,        ///< The first is the length of what begins at `base`, each next one of what follows; 31 bits.
    };

    std::uint64_t offset = 0; ///< Of the first field.
    std::uint64_t count = 1;
    std::uint64_t stride = 0; ///< From one field to the next.
    unsigned width = 4;       ///< Of a field, in bytes, at most 8.
    std::uint64_t base = 0;
    Form form = Form::FromBase;

    std::uint64_t Size() const { return count == 0 ? 0 : (count - 1) * stride + width; }
};

/// Calls `visit` for each position that the fields name, in their order. Of lengths these are all ends but the last.
void ForEachPosition(const ByteReader& file, const PositionTable& table,
                     const std::function<void(std::uint64_t)>& visit);

/// The bytes of the table that lead to the same places after a change; nothing when they are the old ones.
/// @throws NoExactWay when a place is no longer there, or a field is too narrow for it.
std::optional<std::string> FollowPositions(const ByteReader& file, const PositionTable& table, const PositionMap& map);

} // namespace zonstory

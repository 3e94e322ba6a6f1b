#include "clip/layout/PositionTable.h"

#include <algorithm>

#include "clip/layout/ContainerLayout.h"
#include "clip/layout/NumberBytes.h"

namespace zonstory {

namespace {

constexpr std::uint64_t kLengthMask = 0x7FFFFFFF; // the highest bit says what lies there

std::uint64_t NumberAt(const char* bytes, unsigned width) {
    std::uint64_t value = 0;
    for (unsigned index = 0; index < width; ++index) {
        value = value << 8 | static_cast<unsigned char>(bytes[index]);
    }
    return value;
}

// What is added to the base, modulo 2^64.
std::uint64_t Distance(const PositionTable& table, std::uint64_t field) {
    switch (table.form) {
    case PositionTable::Form::SignedFromBase:
        return static_cast<std::uint64_t>(static_cast<std::int32_t>(field));
    case PositionTable::Form::Lengths:
        return field & kLengthMask;
    default:
        return field;
    }
}

std::uint64_t FieldOf(const PositionTable& table, std::uint64_t oldField, std::uint64_t distance) {
    const bool isLength = table.form == PositionTable::Form::Lengths;
    const std::uint64_t field = isLength ? (oldField & ~kLengthMask) | distance : distance;
    const unsigned bits = isLength ? 31 : 8 * table.width;
    const bool fits = table.form == PositionTable::Form::SignedFromBase
                          ? distance == static_cast<std::uint64_t>(static_cast<std::int32_t>(distance))
                          : bits == 64 || distance >> bits == 0;
    if (!fits) {
        throw NoExactWay("a position in its index would overflow");
    }
    return NumberAt(BigBytes(field, table.width).data(), table.width);
}

std::uint64_t Followed(std::optional<std::uint64_t> place) {
    if (!place) {
        throw NoExactWay("its index leads into what would change");
    }
    return *place;
}

} // namespace

void ForEachPosition(const ByteReader& file, const PositionTable& table,
                     const std::function<void(std::uint64_t)>& visit) {
    const std::uint64_t fieldsAtOnce =
        std::max<std::uint64_t>(1, (std::uint64_t{1} << 16) / std::max(table.stride, std::uint64_t{1}));
    const bool areLengths = table.form == PositionTable::Form::Lengths;
    std::uint64_t position = table.base;
    std::string bytes;
    for (std::uint64_t first = 0; first < table.count; first += fieldsAtOnce) {
        const std::uint64_t count = std::min(fieldsAtOnce, table.count - first);
        bytes.resize(static_cast<std::size_t>((count - 1) * table.stride + table.width));
        file.Read(table.offset + first * table.stride, bytes.data(), bytes.size());
        for (std::uint64_t index = 0; index < count; ++index) {
            const std::uint64_t distance = Distance(table, NumberAt(bytes.data() + index * table.stride, table.width));
            position = (areLengths ? position : table.base) + distance;
            if (!areLengths || first + index + 1 < table.count) {
                visit(position);
            }
        }
    }
}

std::optional<std::string> FollowPositions(const ByteReader& file, const PositionTable& table, const PositionMap& map) {
    std::string bytes(static_cast<std::size_t>(table.Size()), '\0');
    file.Read(table.offset, bytes.data(), bytes.size());
    bool isChanged = false;
    std::uint64_t from = table.base;
    for (std::uint64_t index = 0; index < table.count; ++index) {
        char* const field = bytes.data() + index * table.stride;
        const std::uint64_t old = NumberAt(field, table.width);
        const std::uint64_t to = from + Distance(table, old);
        const bool isLast = table.form == PositionTable::Form::Lengths && index + 1 == table.count;
        const bool isFromEnd = table.form == PositionTable::Form::FromEnd;
        const std::uint64_t newTo = Followed(isLast ? map.EndAt(to) : map.At(to));
        if (const std::uint64_t value =
                FieldOf(table, old, newTo - Followed(isFromEnd ? map.EndAt(from) : map.At(from)));
            value != old) {
            const std::string put = BigBytes(value, table.width);
            std::copy(put.begin(), put.end(), field);
            isChanged = true;
        }
        from = table.form == PositionTable::Form::Lengths ? to : table.base;
    }
    return isChanged ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace zonstory

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

constexpr std::size_t kOwnWhiteSpace = 2048; ///< What a new unit keeps for later, as other programs do.

constexpr std::uint64_t kLongestPacket = std::uint64_t{8} << 20; ///< A longer one would fill the memory.

/// A packet of exactly `size` bytes: white space in front of its closing instruction makes up the difference.
/// @pre packet.size() <= size
std::string PaddedPacket(std::string_view packet, std::size_t size);

/// Whether a stretch of a file holds nothing but zeros. @throws FileError
bool IsAllZero(const ByteReader& file, ByteRange range);

} // namespace zonstory

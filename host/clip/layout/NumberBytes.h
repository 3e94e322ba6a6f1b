#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zonstory {

/// The `width` lowest bytes of a number, the highest first.
inline std::string BigBytes(std::uint64_t number, std::size_t width) {
    std::string bytes(width, '\0');
    for (std::size_t index = width; index-- > 0; number >>= 8) {
        bytes[index] = static_cast<char>(number & 0xFF);
    }
    return bytes;
}

/// The same, the lowest first.
inline std::string LittleBytes(std::uint64_t number, std::size_t width) {
    const std::string big = BigBytes(number, width);
    return {big.rbegin(), big.rend()};
}

} // namespace zonstory

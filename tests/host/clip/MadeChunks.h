#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Chunks of RIFF and, big end first, of IFF.
namespace support {

inline std::string Number(std::uint64_t value, bool isBig, std::size_t width = 4, unsigned bits = 8) {
    std::string bytes;
    for (std::size_t index = 0; index < width; ++index) {
        bytes += static_cast<char>(value >> bits * (isBig ? width - 1 - index : index) & ((1U << bits) - 1));
    }
    return bytes;
}

inline std::string Little(std::uint64_t value, std::size_t width = 4) {
    return Number(value, false, width);
}

inline std::string Chunk(const std::string& name, const std::string& content, bool isBig = false) {
    return name + Number(content.size(), isBig) + content + std::string(content.size() % 2, '\0');
}

} // namespace support

#include "clip/layout/Padding.h"

#include <algorithm>
#include <array>

namespace zonstory {

std::string PaddedPacket(std::string_view packet, std::size_t size) {
    constexpr std::size_t kLine = 100;
    std::string space(size - packet.size(), ' ');
    for (std::size_t end = 0; end < space.size(); end += kLine) {
        space[end] = '\n';
    }
    const std::size_t closing = std::min(packet.rfind("<?xpacket"), packet.size());
    return std::string(packet.substr(0, closing)).append(space).append(packet.substr(closing));
}

bool IsAllZero(const ByteReader& file, ByteRange range) {
    std::array<char, 4096> piece{};
    while (range.size > 0) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(range.size, piece.size()));
        file.Read(range.offset, piece.data(), count);
        if (std::any_of(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count),
                        [](char byte) { return byte != 0; })) {
            return false;
        }
        range = {range.offset + count, range.size - count};
    }
    return true;
}

} // namespace zonstory

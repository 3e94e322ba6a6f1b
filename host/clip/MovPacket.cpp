#include "clip/MovPacket.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "clip/IsoBoxes.h"
#include "files/FileSize.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

std::optional<IsoBox> FindPacket(const ByteReader& file) {
    IsoBox box{0, 0, file.Size()};
    for (const std::uint32_t type : {FourCharacters("moov"), FourCharacters("udta"), FourCharacters("XMP_")}) {
        const std::optional<IsoBox> child = FindIsoBox(file, box, type);
        if (!child) {
            return std::nullopt;
        }
        box = *child;
    }
    return box;
}

// Empty when it does not fit.
std::string PacketOfLength(const SXMPMeta& xmp, std::uint64_t length) try {
    constexpr XMP_OptionBits kExactPacketLength = 0x200;
    if (length > std::numeric_limits<std::uint32_t>::max()) {
        return {};
    }
    std::string packet;
    xmp.SerializeToBuffer(&packet, kExactPacketLength | kXMP_UseCompactFormat, static_cast<std::uint32_t>(length), "",
                          "", 0);
    return packet.size() == length ? packet : std::string();
} catch (const XMP_Error&) {
    return {};
}

} // namespace

bool OverwriteMovPacket(const FileDescriptor& file, const SXMPMeta& xmp) {
    const std::optional<IsoBox> place = FindPacket(ByteReader(file, FileSize(file)));
    if (!place) {
        return false;
    }
    const std::string packet = PacketOfLength(xmp, place->size);
    if (packet.empty()) {
        return false;
    }
    WriteAllAt(file, packet, place->offset);
    return true;
}

} // namespace zonstory

#include "clip/layout/IsoLayout.h"

#include <algorithm>
#include <iterator>

#include "clip/layout/IsoPlan.h"

namespace zonstory {

namespace {

// Without the zeros that some put behind a packet.
ByteRange PacketIn(const ByteReader& file, ByteRange room) {
    constexpr std::uint64_t kPiece = 4096;
    std::string bytes;
    while (room.size > 0) {
        bytes.resize(static_cast<std::size_t>(std::min(kPiece, room.size)));
        file.Read(room.End() - bytes.size(), bytes.data(), bytes.size());
        if (const std::size_t last = bytes.find_last_not_of('\0'); last != std::string::npos) {
            return {room.offset, room.size - bytes.size() + last + 1};
        }
        room.size -= bytes.size();
    }
    return room;
}

class IsoMedia : public ContainerLayout {
public:
    explicit IsoMedia(IsoFile iso) : mIso(std::move(iso)) {}

    std::optional<ByteRange> Packet() const override {
        const PacketPlaces& packets = mIso.packets;
        if (!packets.own && packets.others.empty()) {
            return std::nullopt;
        }
        return PacketIn(mIso.file, packets.own ? packets.own->room : packets.others.front().room);
    }

    std::vector<ByteRange> Media() const override {
        std::vector<ByteRange> media;
        for (const Box& box : mIso.boxes.boxes) {
            if (box.type == FourCharacters("mdat")) {
                media.push_back(box.Content());
            }
        }
        return media;
    }

    std::vector<std::uint64_t> Positions() const override {
        std::vector<std::uint64_t> positions;
        for (const PositionTable& table : mIso.index.tables) {
            ForEachPosition(mIso.file, table, [&](std::uint64_t position) { positions.push_back(position); });
        }
        return positions;
    }

    EditPlan Write(std::string_view packet) const override { return PlanIsoWrite(mIso, packet); }
    EditPlan Remove() const override { return PlanIsoRemove(mIso); }

private:
    IsoFile mIso;
};

// Without an index nothing plays a file, unless it is a picture or a piece of a stream, which hold their metadata
// elsewhere.
void RequireMovie(const ByteReader& file, const BoxList& boxes) {
    const Box* const kinds = boxes.Find(FourCharacters("ftyp"));
    if (kinds != nullptr && kinds->Content().size >= 4 &&
        file.Big32(kinds->Content().offset) == FourCharacters("crx ")) {
        throw NoExactWay("it is camera raw");
    }
    if (boxes.Find(FourCharacters("moov")) != nullptr) {
        return;
    }
    if (boxes.Find(FourCharacters("meta")) != nullptr || boxes.Find(FourCharacters("moof")) != nullptr) {
        throw NoExactWay("it has no index of its own");
    }
    throw DamagedFile("is damaged: it has no index of its media");
}

} // namespace

bool IsIsoMedia(const ByteReader& file) {
    constexpr std::uint32_t kFirstBoxes[] = {FourCharacters("ftyp"), FourCharacters("styp"), FourCharacters("moov"),
                                             FourCharacters("mdat"), FourCharacters("free"), FourCharacters("skip"),
                                             FourCharacters("wide"), FourCharacters("pnot")};
    return file.Has(0, 8) &&
           std::find(std::begin(kFirstBoxes), std::end(kFirstBoxes), file.Big32(4)) != std::end(kFirstBoxes);
}

std::unique_ptr<ContainerLayout> ReadIsoMedia(const ByteReader& file) {
    IsoFile iso{file, ReadFileBoxes(file), false, {}, {}};
    RequireMovie(file, iso.boxes);
    iso.isQuickTime = IsQuickTime(file, iso.boxes);
    iso.packets = FindPackets(file, iso.boxes, iso.isQuickTime);
    iso.index = ReadIsoIndex(file, iso.boxes);
    return std::make_unique<IsoMedia>(std::move(iso));
}

} // namespace zonstory

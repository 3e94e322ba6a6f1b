#include "clip/layout/IsoPacket.h"

#include <algorithm>

namespace zonstory {

namespace {

void FindInFile(const ByteReader& file, const BoxList& boxes, std::vector<PacketBox>& found) {
    for (const Box& box : boxes.boxes) {
        if (IsXMPBox(file, box)) {
            const Box* const next = boxes.At(box.End());
            const ByteRange content = box.Content();
            const std::uint64_t identifier = kXMPIdentifier.size();
            found.push_back({box,
                             {},
                             next == nullptr ? std::nullopt : std::optional(*next),
                             false,
                             {content.offset + identifier, content.size - identifier}});
        }
    }
}

void FindInUserData(const ByteReader& file, const Box& index, const Box& userData, std::vector<PacketBox>& found) {
    const BoxList boxes = ReadInnerBoxes(file, userData.Content());
    for (const Box& box : boxes.boxes) {
        if (box.type == FourCharacters("XMP_")) {
            const Box* const next = boxes.At(box.End());
            found.push_back({box,
                             {userData, index},
                             next == nullptr ? std::nullopt : std::optional(*next),
                             userData.Content().size == box.size,
                             box.Content()});
        }
    }
}

// Those in the first user data of the first index come first, and they are what QuickTime's readers look at.
std::vector<PacketBox> FindInIndexes(const ByteReader& file, const BoxList& boxes, std::size_t& inFirst) {
    std::vector<PacketBox> found;
    bool isFirst = true;
    for (const Box& index : boxes.boxes) {
        if (index.type != FourCharacters("moov")) {
            continue;
        }
        for (const Box& userData : ReadInnerBoxes(file, index.Content()).boxes) {
            if (userData.type == FourCharacters("udta")) {
                FindInUserData(file, index, userData, found);
                inFirst = isFirst ? found.size() : inFirst;
                isFirst = false;
            }
        }
        isFirst = false;
    }
    return found;
}

} // namespace

const std::string kXMPIdentifier = "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC";

bool IsXMPBox(const ByteReader& file, const Box& box) {
    if (box.type != FourCharacters("uuid") || box.Content().size < kXMPIdentifier.size()) {
        return false;
    }
    std::string identifier(kXMPIdentifier.size(), '\0');
    file.Read(box.Content().offset, identifier.data(), identifier.size());
    return identifier == kXMPIdentifier;
}

// The first of the kinds is the one that it was made as, and counts where it is the only one.
bool IsQuickTime(const ByteReader& file, const BoxList& boxes) {
    if (boxes.boxes.empty() || boxes.boxes.front().type != FourCharacters("ftyp")) {
        return true;
    }
    constexpr std::uint64_t kFirstOther = 8;
    constexpr std::uint64_t kMost = 1024;
    const ByteRange content = boxes.boxes.front().Content();
    bool areOthers = false;
    for (std::uint64_t offset = kFirstOther; offset + 4 <= std::min(content.size, kMost); offset += 4) {
        const std::uint32_t kind = file.Big32(content.offset + offset);
        if (kind == FourCharacters("qt  ")) {
            return true;
        }
        areOthers = areOthers || kind != 0;
    }
    return !areOthers && content.size >= 4 && file.Big32(content.offset) == FourCharacters("qt  ");
}

PacketPlaces FindPackets(const ByteReader& file, const BoxList& boxes, bool isQuickTime) {
    PacketPlaces places;
    std::vector<PacketBox> inFile;
    FindInFile(file, boxes, inFile);
    std::size_t own = 0;
    std::vector<PacketBox> inIndexes = FindInIndexes(file, boxes, own);
    std::vector<PacketBox>& right = isQuickTime ? inIndexes : inFile;
    if (isQuickTime ? own > 0 : !inFile.empty()) {
        places.own = right.front();
        right.erase(right.begin());
    }
    places.others = std::move(inIndexes);
    places.others.insert(places.others.end(), inFile.begin(), inFile.end());
    std::sort(places.others.begin(), places.others.end(),
              [](const PacketBox& one, const PacketBox& other) { return one.box.offset < other.box.offset; });
    return places;
}

} // namespace zonstory

#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "clip/layout/ContainerLayout.h"
#include "host/clip/Edits.h"
#include "host/files/MemoryFile.h"
#include "support/MessageOf.h"

/// What holds of the edits of any file, whatever it is; shared by tests on made-up files and by the fuzzer.
namespace support {

/// A file in memory and its layout.
class LayoutOf {
public:
    explicit LayoutOf(const std::string& bytes, const std::string& extension = "")
        : mFile(bytes), mReader(mFile.Descriptor(), bytes.size()), mLayout(zonstory::ReadLayout(mReader, extension)) {}
    const zonstory::ContainerLayout* operator->() const { return mLayout.get(); }

private:
    MemoryFile mFile;
    zonstory::ByteReader mReader;
    std::unique_ptr<zonstory::ContainerLayout> mLayout;
};

inline void Require(bool condition, const char* what) {
    if (!condition) {
        throw std::logic_error(what);
    }
}

inline std::string BytesAt(const std::string& bytes, zonstory::ByteRange range) {
    return bytes.substr(range.offset, range.size);
}

inline std::size_t PacketsIn(const std::string& bytes) {
    std::size_t count = 0;
    for (std::size_t at = bytes.find("<?xpacket end"); at != std::string::npos;
         at = bytes.find("<?xpacket end", at + 1)) {
        ++count;
    }
    return count;
}

inline std::string MadePacket(std::size_t size) {
    return "<?xpacket begin?>" + std::string(size, 'x') + "<?xpacket end=\"w\"?>";
}

inline std::string WithoutPadding(std::string packet) {
    const std::size_t end = packet.rfind("<?xpacket end");
    const std::size_t last = end == 0 ? end : packet.find_last_not_of(" \n", end - 1) + 1;
    return packet.erase(last, end - last);
}

// A new version, which must not be worse than the old one.
inline LayoutOf Reread(const std::string& bytes) {
    try {
        return LayoutOf(bytes);
    } catch (const std::runtime_error& error) {
        throw std::logic_error(std::string("a new version ") + error.what());
    }
}

// Media and positions lead to the same bytes; media moves by whole blocks. Whether nothing moved.
inline bool RequireSameMedia(const std::string& before, const LayoutOf& layoutBefore, const std::string& after,
                             const LayoutOf& layoutAfter, const zonstory::EditList& edits) {
    const auto media = layoutBefore->Media();
    const auto mediaAfter = layoutAfter->Media();
    Require(media.size() == mediaAfter.size(), "media came or went");
    for (std::size_t index = 0; index < media.size(); ++index) {
        Require(BytesAt(before, media[index]) == BytesAt(after, mediaAfter[index]), "media differs");
        Require((mediaAfter[index].offset - media[index].offset) % 4096 == 0, "media moved by a part of a block");
    }
    const auto positions = layoutBefore->Positions();
    const auto positionsAfter = layoutAfter->Positions();
    Require(positions.size() == positionsAfter.size(), "positions came or went");
    for (std::size_t index = 0; index < positions.size(); ++index) {
        std::uint64_t moved = positions[index];
        for (const zonstory::Edit& edit : edits) {
            const bool isWithin = edit.offset < positions[index] && positions[index] < edit.offset + edit.taken;
            Require(!isWithin, "a position leads into a change");
            const bool isAtEnd = edit.offset + edit.taken == before.size();
            moved += edit.offset <= positions[index] && !isAtEnd ? edit.put.size() - edit.taken : 0;
        }
        Require(moved == positionsAfter[index], "a position leads elsewhere");
    }
    return media == mediaAfter && positions == positionsAfter;
}

// Writes a packet, and once more. Whether nothing moved that it names.
inline bool RequireExactWrite(const std::string& before, const std::string& packet, std::string& after) {
    const LayoutOf layout(before);
    const zonstory::EditList edits = layout->Write(packet).edits;
    Require(IsWellFormed(before, edits), "the edits of a new packet are no list");
    after = Applied(before, edits);
    const LayoutOf written = Reread(after);
    Require(written->Packet() && WithoutPadding(BytesAt(after, *written->Packet())) == packet, "another packet");
    Require(written->Write(packet).edits.empty(), "the same packet is written again");
    return RequireSameMedia(before, layout, after, written, edits);
}

/// Why there is no exact way to write a packet into a file; empty where there is one.
inline std::string ReasonAgainst(const std::string& bytes) {
    return MessageOf<zonstory::NoExactWay>([&] { LayoutOf(bytes)->Write(MadePacket(9)); });
}

/// Writes packets of several sizes one after the other, and removes the last.
/// @return The version before the last is removed.
/// @throws std::logic_error naming what does not hold; NoExactWay and DamagedFile as the layout does.
inline std::string RequireExactEdits(const std::string& bytes) {
    const bool hadPacket = LayoutOf(bytes)->Packet().has_value();
    bool isUnmoved = true;
    std::string now = bytes;
    for (const std::size_t size : {100U, 50U, 700U, 3000U, 9000U}) {
        const std::string before = now;
        isUnmoved = RequireExactWrite(before, MadePacket(size), now) && isUnmoved;
        Require(before == bytes || PacketsIn(now) == PacketsIn(before), "an old packet is left behind");
    }
    const LayoutOf layout = Reread(now);
    const zonstory::EditList edits = layout->Remove().edits;
    Require(IsWellFormed(now, edits), "the edits of a removal are no list");
    const std::string removed = Applied(now, edits);
    RequireSameMedia(now, layout, removed, Reread(removed), edits);
    Require(hadPacket || !isUnmoved || removed == bytes, "written and cleared is not as before");
    return now;
}

} // namespace support

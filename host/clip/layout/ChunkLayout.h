#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clip/layout/ChunkForm.h"
#include "clip/layout/ContainerLayout.h"

namespace zonstory {

/// How a format made of chunks keeps its packet.
struct ChunkFormat {
    ChunkOrder order;
    std::uint32_t name;    ///< Of the chunk that holds the packet.
    std::string_view mark; ///< What stands before the packet in it.
    std::uint32_t filler;  ///< The name of chunks that mean nothing.
};

/// A chunk that holds a packet.
struct PacketChunk {
    Chunk chunk;
    std::uint64_t before = 0; ///< Where the content of the chunk before it ends.
    std::size_t form = 0;     ///< Which form it lies in.
};

/// What was found in a file made of chunks.
struct ChunkFindings {
    std::vector<ChunkForm> forms;
    std::vector<ByteRange> media;
    std::vector<PacketChunk> packets;
    std::function<std::vector<std::uint64_t>()> positions; ///< Reads the file's indexes, where it has any.
};

/// Adds a chunk of the form that is being read, unless it is empty. @throws NoExactWay when it is too long for one.
void AddPacket(const ChunkFormat& format, const Chunk& chunk, std::uint64_t before, ChunkFindings& found);

/// What is kept of a file stays within bounds. @throws NoExactWay for more of a kind than any program makes.
void RequireFew(std::size_t count);

/// WAV, AVI and AIFF. The packet is a chunk of its own; of several the last one is it, as for the XMP toolkit. Nothing that
/// is media, or that an index names, ever moves: a packet that outgrows its room before them leaves a filler there and goes
/// to the end.
class ChunkLayout final : public ContainerLayout {
public:
    /// @param file  Must outlive this.
    ChunkLayout(const ByteReader& file, const ChunkFormat& format, ChunkFindings found);

    std::optional<ByteRange> Packet() const override;
    std::vector<ByteRange> Media() const override { return mFound.media; }
    std::vector<std::uint64_t> Positions() const override;
    EditPlan Write(std::string_view packet) const override;
    EditPlan Remove() const override;

private:
    const PacketChunk& Last() const { return mFound.packets.back(); }
    const ChunkForm& FormOfLast() const { return mFound.forms[Last().form]; }
    ByteRange Room() const;
    bool CameWithPad() const;
    std::uint64_t RoomWithFiller() const;
    std::vector<std::uint64_t> Named() const;
    bool MayMoveFrom(std::uint64_t offset) const;
    EditPlan Finished(EditPlan plan) const;

    void Overwrite(std::string_view packet, EditList& edits) const;
    void TakeFiller(std::string_view packet, std::uint64_t room, EditList& edits) const;
    void Regrow(std::string_view packet, EditList& edits) const;
    void Retire(EditList& edits) const;
    void Append(std::string_view packet, EditList& edits) const;

    std::string Header(std::uint32_t name, std::uint64_t size) const;
    std::string Unit(std::string_view packet, bool cameWithPad) const;

    const ByteReader& mFile;
    ChunkFormat mFormat;
    ChunkFindings mFound;
};

} // namespace zonstory

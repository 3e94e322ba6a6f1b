#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "files/ByteReader.h"

namespace zonstory {

/// Goes through the bytes of an ID3v2 tag from front to back. In an unsynchronised one a zero behind 0xFF is none of what
/// the tag says, so what it says is shorter than what is in the file.
class Id3Cursor {
public:
    /// @param file  Must outlive this.
    Id3Cursor(const ByteReader& file, std::uint64_t position, std::uint64_t end, bool isUnsynchronised)
        : mFile(file), mPosition(position), mEnd(end), mIsUnsynchronised(isUnsynchronised) {}

    std::uint64_t Position() const { return mPosition; } ///< In the file.
    std::uint64_t Left() const { return mEnd - mPosition; }

    /// @throws NoExactWay when the tag is not that long, as the next ones.
    std::uint8_t Next8();
    std::uint32_t Next16();
    std::uint32_t Next32();
    void Skip(std::uint64_t count);

private:
    std::uint8_t ByteAt(std::uint64_t offset);

    const ByteReader& mFile;
    std::uint64_t mPosition;
    std::uint64_t mEnd;
    bool mIsUnsynchronised;
    std::array<std::uint8_t, 4096> mPiece{};
    std::uint64_t mPieceOffset = 0;
    std::size_t mPieceSize = 0;
};

} // namespace zonstory

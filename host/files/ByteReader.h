#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "files/FileDescriptor.h"

namespace zonstory {

/// Numbers and names out of a file of a known size, at any place; what media containers are made of. Numbers lie close to
/// each other, so a piece of the file around the last one is at hand. For one thread, as long as nobody writes the file.
class ByteReader {
public:
    /// @param file  Must outlive this.
    // NOLINTNEXTLINE(*-member-init): the piece is empty
    ByteReader(const FileDescriptor& file, std::uint64_t size) : mFile(file), mSize(size) {}

    std::uint64_t Size() const { return mSize; }
    /// Whether `count` bytes at `offset` lie within the file.
    bool Has(std::uint64_t offset, std::uint64_t count) const { return offset <= mSize && count <= mSize - offset; }

    /// @throws FileError when the bytes are not there or the disk fails, as the next ones.
    void Read(std::uint64_t offset, void* bytes, std::size_t count) const;
    std::uint32_t Big32(std::uint64_t offset) const;
    std::uint64_t Big64(std::uint64_t offset) const;
    std::uint32_t Little32(std::uint64_t offset) const;
    std::uint64_t Little64(std::uint64_t offset) const;

private:
    template <typename Number, bool kBigEnd>
    Number ReadNumber(std::uint64_t offset) const;

    const FileDescriptor& mFile;
    std::uint64_t mSize;
    mutable std::array<unsigned char, 4096> mPiece;
    mutable std::uint64_t mPieceOffset = 0;
    mutable std::size_t mPieceSize = 0;
};

/// Four characters as the number that they are when read big end first.
constexpr std::uint32_t FourCharacters(const char (&name)[5]) {
    std::uint32_t number = 0;
    for (int index = 0; index < 4; ++index) {
        number = number << 8 | static_cast<unsigned char>(name[index]);
    }
    return number;
}

} // namespace zonstory

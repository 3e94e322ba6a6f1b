#include "files/ByteReader.h"

#include <algorithm>

#include <unistd.h>

#include "files/FileError.h"
#include "files/SystemError.h"

namespace zonstory {

template <typename Number, bool kBigEnd>
Number ByteReader::ReadNumber(std::uint64_t offset) const {
    constexpr std::size_t kCount = sizeof(Number);
    if (offset < mPieceOffset || offset - mPieceOffset + kCount > mPieceSize) {
        const std::uint64_t left = offset < mSize ? mSize - offset : 0;
        const auto size = static_cast<std::size_t>(std::clamp<std::uint64_t>(left, kCount, mPiece.size()));
        mPieceSize = 0; // until it has been read
        Read(offset, mPiece.data(), size);
        mPieceOffset = offset;
        mPieceSize = size;
    }
    const unsigned char* const bytes = mPiece.data() + (offset - mPieceOffset);
    Number number = 0;
    for (std::size_t index = 0; index < kCount; ++index) {
        number = static_cast<Number>(number << 8 | bytes[kBigEnd ? index : kCount - 1 - index]);
    }
    return number;
}

void ByteReader::Read(std::uint64_t offset, void* bytes, std::size_t count) const {
    auto* to = static_cast<std::byte*>(bytes);
    while (count > 0) {
        const ssize_t got = ::pread(mFile.Get(), to, count, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            ThrowSystemError("cannot be read");
        }
        if (got == 0) {
            throw FileError("is damaged: it ends too early");
        }
        to += got;
        offset += static_cast<std::uint64_t>(got);
        count -= static_cast<std::size_t>(got);
    }
}

std::uint32_t ByteReader::Big32(std::uint64_t offset) const {
    return ReadNumber<std::uint32_t, true>(offset);
}

std::uint64_t ByteReader::Big64(std::uint64_t offset) const {
    return ReadNumber<std::uint64_t, true>(offset);
}

std::uint32_t ByteReader::Little32(std::uint64_t offset) const {
    return ReadNumber<std::uint32_t, false>(offset);
}

std::uint64_t ByteReader::Little64(std::uint64_t offset) const {
    return ReadNumber<std::uint64_t, false>(offset);
}

} // namespace zonstory

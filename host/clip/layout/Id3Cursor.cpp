#include "clip/layout/Id3Cursor.h"

#include <algorithm>

#include "clip/layout/ContainerLayout.h"

namespace zonstory {

namespace {

void RequireLeft(std::uint64_t left, std::uint64_t count) {
    if (count > left) {
        throw NoExactWay("what its tag holds reaches beyond the tag");
    }
}

} // namespace

std::uint8_t Id3Cursor::Next8() {
    RequireLeft(Left(), 1);
    const std::uint8_t byte = ByteAt(mPosition++);
    if (mIsUnsynchronised && byte == 0xFF && Left() > 0 && ByteAt(mPosition) == 0) {
        ++mPosition;
    }
    return byte;
}

std::uint32_t Id3Cursor::Next16() {
    const std::uint32_t high = Next8();
    return high << 8 | Next8();
}

std::uint32_t Id3Cursor::Next32() {
    const std::uint32_t high = Next16();
    return high << 16 | Next16();
}

void Id3Cursor::Skip(std::uint64_t count) {
    if (!mIsUnsynchronised) {
        RequireLeft(Left(), count);
        mPosition += count;
        return;
    }
    for (; count > 0; --count) {
        Next8();
    }
}

std::uint8_t Id3Cursor::ByteAt(std::uint64_t offset) {
    if (offset < mPieceOffset || offset - mPieceOffset >= mPieceSize) {
        mPieceSize = static_cast<std::size_t>(std::min<std::uint64_t>(mPiece.size(), mEnd - offset));
        mFile.Read(offset, mPiece.data(), mPieceSize);
        mPieceOffset = offset;
    }
    return mPiece[static_cast<std::size_t>(offset - mPieceOffset)];
}

} // namespace zonstory

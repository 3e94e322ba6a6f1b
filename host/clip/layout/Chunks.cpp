#include "clip/layout/Chunks.h"

#include <algorithm>

namespace zonstory {

namespace {

// "ds64": the form's size, that of "data", a count of samples, the number of rows; a row is a name and a size.
constexpr std::uint64_t kLongHead = 28;
constexpr std::uint64_t kLongRow = 12;
constexpr std::uint64_t kMostRows = 4096; // No program writes more; a file that has them is made to waste time.

bool IsName(std::uint32_t name) {
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t character = name >> shift & 0xFF;
        if (character < ' ' || character > '~') {
            return false;
        }
    }
    return true;
}

bool IsForm(std::uint32_t name) {
    return name == FourCharacters("RIFF") || name == FourCharacters("RF64") || name == FourCharacters("BW64");
}

} // namespace

LongSizes::LongSizes(const ByteReader& file, std::uint64_t form) {
    const std::uint64_t chunk = form + kFormHeader;
    if (!file.Has(chunk, kChunkHeader + kLongHead) || file.Big32(chunk) != FourCharacters("ds64")) {
        return;
    }
    const ByteRange content{chunk + kChunkHeader, file.Little32(chunk + 4)};
    if (content.size < kLongHead || !file.Has(content.offset, content.size)) {
        return;
    }
    mChunk = content;
    mFormSize = file.Little64(content.offset);
    mDataSize = file.Little64(content.offset + 8);
    mRows =
        std::min({std::uint64_t{file.Little32(content.offset + 24)}, (content.size - kLongHead) / kLongRow, kMostRows});
}

std::optional<std::uint64_t> LongSizes::SizeOf(const ByteReader& file, std::uint32_t name) const {
    if (!Exist()) {
        return std::nullopt;
    }
    if (name == FourCharacters("data")) {
        return mDataSize;
    }
    for (std::uint64_t row = 0; row < mRows; ++row) {
        const std::uint64_t offset = mChunk.offset + kLongHead + row * kLongRow;
        if (file.Big32(offset) == name) {
            return file.Little64(offset + 4);
        }
    }
    return std::nullopt;
}

Chunks::Chunks(const ByteReader& file, ChunkOrder order, ByteRange within, const LongSizes* sizes)
    : mFile(file), mOrder(order), mSizes(sizes), mPosition(within.offset),
      mEnd(within.offset + std::min(within.size, file.Size() - std::min(file.Size(), within.offset))) {}

std::optional<Chunk> Chunks::Next() {
    if (mPosition > mEnd || mEnd - mPosition < kChunkHeader || !IsName(mFile.Big32(mPosition))) {
        return std::nullopt;
    }
    Chunk chunk;
    chunk.name = mFile.Big32(mPosition);
    chunk.content = {mPosition + kChunkHeader, SizeOf(chunk.name)};
    const bool isWhole = chunk.content.size <= mEnd - chunk.content.offset;
    chunk.next = mPosition = isWhole ? Behind(chunk.content) : mEnd;
    return chunk;
}

std::uint64_t Chunks::SizeOf(std::uint32_t name) {
    const std::uint64_t field = mPosition + 4;
    const std::uint32_t size = mOrder == ChunkOrder::Little ? mFile.Little32(field) : mFile.Big32(field);
    return mSizes != nullptr && size == LongSizes::kElsewhere ? mSizes->SizeOf(mFile, name).value_or(size) : size;
}

bool Chunks::BeginsAt(std::uint64_t offset) const {
    if (offset > mEnd || mEnd - offset < kChunkHeader || !IsName(mFile.Big32(offset))) {
        return false;
    }
    const std::uint64_t size = mOrder == ChunkOrder::Little ? mFile.Little32(offset + 4) : mFile.Big32(offset + 4);
    return size <= mEnd - offset - kChunkHeader || (mSizes != nullptr && size == LongSizes::kElsewhere);
}

// Behind the pad byte of an odd chunk, unless it is plain that its writer left it out: what stands there is a chunk, and
// what stands a byte further is none.
std::uint64_t Chunks::Behind(const ByteRange& content) const {
    const std::uint64_t end = content.End();
    const bool hasPad = content.size % 2 != 0 && (!BeginsAt(end) || BeginsAt(end + 1));
    return end + (hasPad ? 1 : 0);
}

std::optional<std::string> FindRiffChunk(const ByteReader& file, std::uint32_t name, std::size_t most) {
    if (!file.Has(0, kFormHeader) || !IsForm(file.Big32(0))) {
        return std::nullopt;
    }
    const LongSizes sizes(file, 0);
    Chunks chunks(file, ChunkOrder::Little, {kFormHeader, file.Size() - kFormHeader}, &sizes);
    while (const std::optional<Chunk> chunk = chunks.Next()) {
        if (chunk->name == name) {
            const std::uint64_t there = std::min(chunk->content.size, file.Size() - chunk->content.offset);
            std::string content(static_cast<std::size_t>(std::min<std::uint64_t>(there, most)), '\0');
            file.Read(chunk->content.offset, content.data(), content.size());
            return content;
        }
    }
    return std::nullopt;
}

} // namespace zonstory

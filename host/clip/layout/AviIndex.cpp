#include "clip/layout/AviIndex.h"

#include <algorithm>
#include <utility>

#include "clip/layout/ContainerLayout.h"

namespace zonstory {

namespace {

// Of "indx" and of the "ix##" that it names: 2 bytes longs in a row, 1 sub-type, 1 type, 4 rows in use, 4 name, and 12 that
// an index of media begins with its base in.
constexpr std::uint64_t kHead = 24;
constexpr std::uint64_t kRowsInUse = 4;
constexpr std::uint64_t kBase = 12;
constexpr std::uint32_t kOfIndexes = 0;
constexpr std::uint32_t kOfMedia = 1;

class Positions {
public:
    explicit Positions(const ByteReader& file) : mFile(file) {}

    std::vector<std::uint64_t> Take() { return std::move(mPositions); }

    void AddOlder(const ByteRange& index, std::uint64_t movi) {
        constexpr std::uint64_t kRow = 16;
        const std::uint64_t base = index.size >= kRow && CountsFromMovi(index.offset) ? movi : 0;
        for (std::uint64_t row = 0; row + kRow <= index.size; row += kRow) {
            Add(base + mFile.Little32(index.offset + row + 8));
        }
    }

    void AddNewer(const ByteRange& index) {
        if (index.size < kHead) {
            return;
        }
        if (!mFile.Has(index.offset, index.size)) {
            throw NoExactWay("an index of it reaches beyond its end");
        }
        const std::uint32_t start = mFile.Little32(index.offset);
        const std::uint64_t row = std::uint64_t{start & 0xFFFF} * 4;
        const std::uint64_t room = row > 0 ? (index.size - kHead) / row : 0;
        const std::uint64_t rows = std::min<std::uint64_t>(mFile.Little32(index.offset + kRowsInUse), room);
        const std::uint32_t type = start >> 24;
        if (type == kOfIndexes && row >= 16) {
            AddIndexes(index.offset + kHead, row, rows);
        } else if (type == kOfMedia && row >= 8) {
            AddMedia(index.offset + kHead, row, rows, mFile.Little64(index.offset + kBase));
        }
    }

private:
    // @throws NoExactWay when there are more rows than the file has room for: one index is named many times.
    void Add(std::uint64_t position) {
        constexpr std::uint64_t kLeastRow = 8;
        if (mPositions.size() >= mFile.Size() / kLeastRow) {
            throw NoExactWay("its indexes name each other more than once");
        }
        mPositions.push_back(position);
    }

    // Both ways are in use, and nothing but what stands there tells which.
    bool CountsFromMovi(std::uint64_t row) const {
        const std::uint64_t position = mFile.Little32(row + 8);
        const std::uint32_t name = mFile.Big32(row);
        return !mFile.Has(position, 4) || mFile.Big32(position) != name;
    }

    void AddIndexes(std::uint64_t offset, std::uint64_t row, std::uint64_t rows) {
        for (; rows > 0; --rows, offset += row) {
            const std::uint64_t chunk = mFile.Little64(offset);
            Add(chunk);
            constexpr std::uint64_t kChunkHeader = 8;
            if (!mFile.Has(chunk, kChunkHeader + 4)) {
                throw NoExactWay("an index of it names another beyond its end");
            }
            if (mFile.Big32(chunk + kChunkHeader) % 256 == kOfMedia) { // no deeper
                AddNewer({chunk + kChunkHeader, mFile.Little32(chunk + 4)});
            }
        }
    }

    void AddMedia(std::uint64_t offset, std::uint64_t row, std::uint64_t rows, std::uint64_t base) {
        for (; rows > 0; --rows, offset += row) {
            Add(base + mFile.Little32(offset));
        }
    }

    const ByteReader& mFile;
    std::vector<std::uint64_t> mPositions;
};

} // namespace

std::vector<std::uint64_t> ReadAviPositions(const ByteReader& file, const AviIndexes& indexes) {
    Positions positions(file);
    for (const ByteRange& index : indexes.older) {
        positions.AddOlder(index, indexes.movi);
    }
    for (const ByteRange& index : indexes.newer) {
        positions.AddNewer(index);
    }
    return positions.Take();
}

} // namespace zonstory

#include "clip/RiffChunks.h"

#include <algorithm>

#include "clip/Clip.h"

namespace zonstory {

namespace {

constexpr std::uint64_t kHeader = 8;
constexpr std::uint64_t kListHeader = 12;
constexpr std::uint32_t kSizeElsewhere = 0xFFFFFFFF;

struct Chunk {
    std::uint32_t name;
    std::uint64_t offset; // of its content
    std::uint64_t size;   // of its content
};

enum class End { Little, Big };

// Calls `visit` for each chunk that lies between two places.
// @param longSize  What the size of a chunk stands for that says it stands elsewhere.
template <typename Visit>
void VisitChunks(const ByteReader& file, End end, std::uint64_t begin, std::uint64_t stop, std::uint64_t longSize,
                 Visit visit) {
    while (begin <= stop && stop - begin >= kHeader) {
        Chunk chunk{file.Big32(begin), begin + kHeader,
                    end == End::Little ? file.Little32(begin + 4) : file.Big32(begin + 4)};
        if (chunk.size == kSizeElsewhere && longSize != 0) {
            chunk.size = longSize;
        }
        if (!file.Has(chunk.offset, chunk.size)) {
            throw ClipError("is damaged: it ends too early");
        }
        visit(chunk);
        begin = chunk.offset + chunk.size + chunk.size % 2; // chunks start at even places
    }
}

} // namespace

std::vector<ByteRange> FindWaveMedia(const ByteReader& file) {
    std::vector<ByteRange> media;
    std::uint64_t longSize = 0;
    if (file.Has(0, 36) && file.Big32(kListHeader) == FourCharacters("ds64")) {
        constexpr std::uint64_t kDataSize = kListHeader + kHeader + 8;
        longSize = file.Little64(kDataSize);
    }
    VisitChunks(file, End::Little, kListHeader, file.Size(), longSize, [&](const Chunk& chunk) {
        if (chunk.name == FourCharacters("data")) {
            media.push_back({chunk.offset, chunk.size});
        }
    });
    return media;
}

std::vector<ByteRange> FindAviMedia(const ByteReader& file) {
    std::vector<ByteRange> media;
    VisitChunks(file, End::Little, 0, file.Size(), 0, [&](const Chunk& part) {
        if (part.name != FourCharacters("RIFF") || part.size < 4) {
            return;
        }
        VisitChunks(file, End::Little, part.offset + 4, part.offset + part.size, 0, [&](const Chunk& chunk) {
            if (chunk.name == FourCharacters("LIST") && chunk.size >= 4 &&
                file.Big32(chunk.offset) == FourCharacters("movi")) {
                media.push_back({chunk.offset + 4, chunk.size - 4});
            }
        });
    });
    return media;
}

std::vector<ByteRange> FindAiffMedia(const ByteReader& file) {
    std::vector<ByteRange> media;
    VisitChunks(file, End::Big, kListHeader, file.Size(), 0, [&](const Chunk& chunk) {
        if (chunk.name == FourCharacters("SSND")) {
            media.push_back({chunk.offset, chunk.size});
        }
    });
    return media;
}

} // namespace zonstory

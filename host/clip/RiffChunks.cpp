#include "clip/RiffChunks.h"

#include "clip/Clip.h"
#include "clip/layout/Chunks.h"

namespace zonstory {

namespace {

// Calls `visit` for each chunk that lies between two places.
template <typename Visit>
void VisitChunks(const ByteReader& file, Chunks chunks, Visit visit) {
    while (const std::optional<Chunk> chunk = chunks.Next()) {
        if (!file.Has(chunk->content.offset, chunk->content.size)) {
            throw ClipError("is damaged: it ends too early");
        }
        visit(*chunk);
    }
}

Chunks FormChunks(const ByteReader& file, ChunkOrder order, const LongSizes* sizes = nullptr) {
    return {file, order, {kFormHeader, file.Size()}, sizes};
}

} // namespace

std::vector<ByteRange> FindWaveMedia(const ByteReader& file) {
    std::vector<ByteRange> media;
    const LongSizes sizes(file, 0);
    VisitChunks(file, FormChunks(file, ChunkOrder::Little, &sizes), [&](const Chunk& chunk) {
        if (chunk.name == FourCharacters("data")) {
            media.push_back(chunk.content);
        }
    });
    return media;
}

std::vector<ByteRange> FindAviMedia(const ByteReader& file) {
    std::vector<ByteRange> media;
    VisitChunks(file, {file, ChunkOrder::Little, {0, file.Size()}}, [&](const Chunk& part) {
        if (part.name != FourCharacters("RIFF") || part.content.size < 4) {
            return;
        }
        const ByteRange chunks{part.content.offset + 4, part.content.size - 4};
        VisitChunks(file, {file, ChunkOrder::Little, chunks}, [&](const Chunk& chunk) {
            if (chunk.name == FourCharacters("LIST") && chunk.content.size >= 4 &&
                file.Big32(chunk.content.offset) == FourCharacters("movi")) {
                media.push_back({chunk.content.offset + 4, chunk.content.size - 4});
            }
        });
    });
    return media;
}

std::vector<ByteRange> FindAiffMedia(const ByteReader& file) {
    std::vector<ByteRange> media;
    VisitChunks(file, FormChunks(file, ChunkOrder::Big), [&](const Chunk& chunk) {
        if (chunk.name == FourCharacters("SSND")) {
            media.push_back(chunk.content);
        }
    });
    return media;
}

} // namespace zonstory

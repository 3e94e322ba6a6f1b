#include "clip/layout/RiffLayout.h"

#include "clip/layout/AviIndex.h"
#include "clip/layout/ChunkLayout.h"

namespace zonstory {

namespace {

constexpr ChunkFormat kRiff{ChunkOrder::Little, FourCharacters("_PMX"), "", FourCharacters("JUNK")};
constexpr std::uint32_t kList = FourCharacters("LIST");

bool IsListOf(const ByteReader& file, const Chunk& chunk, std::uint32_t type) {
    return chunk.name == kList && chunk.content.size >= 4 && file.Big32(chunk.content.offset) == type;
}

// A size in "ds64" that was never brought up to date is true for some programs: they would take a packet behind the sound
// for more of it.
void RequireTrueLength(const ByteReader& file, const ChunkFindings& found) {
    const std::optional<std::uint64_t> size = found.forms.back().longSizes.SizeOf(file, FourCharacters("data"));
    for (const ByteRange& media : found.media) {
        if (size && *size > media.size) {
            throw NoExactWay("its \"ds64\" chunk gives the sound another length than the sound has");
        }
    }
}

ChunkFindings FindInWave(const ByteReader& file) {
    ChunkFindings found;
    found.forms.push_back(ReadForm(file, ChunkOrder::Little, 0, [&](const Chunk& chunk, std::uint64_t before) {
        if (chunk.name == kRiff.name) {
            AddPacket(kRiff, chunk, before, found);
        } else if (chunk.name == FourCharacters("data") || IsListOf(file, chunk, FourCharacters("wavl"))) {
            found.media.push_back(chunk.content);
            RequireFew(found.media.size());
        }
    }));
    RequireTrueLength(file, found);
    return found;
}

void FindIndexesOfStreams(const ByteReader& file, const ByteRange& list, AviIndexes& indexes) {
    Chunks chunks(file, ChunkOrder::Little, {list.offset + 4, list.size - 4});
    while (const std::optional<Chunk> chunk = chunks.Next()) {
        if (IsListOf(file, *chunk, FourCharacters("strl"))) {
            Chunks inner(file, ChunkOrder::Little, {chunk->content.offset + 4, chunk->content.size - 4});
            while (const std::optional<Chunk> part = inner.Next()) {
                if (part->name == FourCharacters("indx")) {
                    indexes.newer.push_back(part->content);
                    RequireFew(indexes.newer.size());
                }
            }
        }
    }
}

ChunkFindings FindInAvi(const ByteReader& file) {
    ChunkFindings found;
    AviIndexes indexes;
    const auto visit = [&](const Chunk& chunk, std::uint64_t before) {
        if (chunk.name == kRiff.name) {
            AddPacket(kRiff, chunk, before, found);
        } else if (IsListOf(file, chunk, FourCharacters("movi"))) {
            indexes.movi = found.media.empty() ? chunk.content.offset : indexes.movi;
            found.media.push_back({chunk.content.offset + 4, chunk.content.size - 4});
            RequireFew(found.media.size());
        } else if (IsListOf(file, chunk, FourCharacters("hdrl"))) {
            FindIndexesOfStreams(file, chunk.content, indexes);
        } else if (chunk.name == FourCharacters("idx1")) {
            indexes.older.push_back(chunk.content);
            RequireFew(indexes.older.size());
        }
    };
    std::uint64_t next = 0;
    do {
        found.forms.push_back(ReadForm(file, ChunkOrder::Little, next, visit));
        RequireFew(found.forms.size());
        next = found.forms.back().end + found.forms.back().end % 2;
    } while (file.Has(next, kFormHeader) && file.Big32(next) == FourCharacters("RIFF") &&
             file.Big32(next + kChunkHeader) == FourCharacters("AVIX"));
    found.positions = [&file, indexes] { return ReadAviPositions(file, indexes); };
    return found;
}

ChunkFindings FindIn(const ByteReader& file) {
    switch (file.Big32(kChunkHeader)) {
    case FourCharacters("WAVE"):
        return FindInWave(file);
    case FourCharacters("AVI "):
        return FindInAvi(file);
    default:
        throw NoExactWay("it is a RIFF file, but neither WAV nor AVI");
    }
}

} // namespace

bool IsRiff(const ByteReader& file) {
    if (!file.Has(0, kFormHeader)) {
        return false;
    }
    const std::uint32_t name = file.Big32(0);
    return name == FourCharacters("RIFF") || name == FourCharacters("RF64") || name == FourCharacters("BW64");
}

std::unique_ptr<ContainerLayout> ReadRiff(const ByteReader& file) {
    ChunkFindings found = FindIn(file);
    RequireLittleBehind(file, found.forms.back());
    return std::make_unique<ChunkLayout>(file, kRiff, std::move(found));
}

} // namespace zonstory

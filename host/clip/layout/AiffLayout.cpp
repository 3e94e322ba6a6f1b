#include "clip/layout/AiffLayout.h"

#include "clip/layout/ChunkLayout.h"

namespace zonstory {

namespace {

// A chunk of an application of its own, which "XMP " names. Four blanks are the name that IFF keeps for chunks without
// meaning.
constexpr ChunkFormat kAiff{ChunkOrder::Big, FourCharacters("APPL"), "XMP ", FourCharacters("    ")};

bool IsOfXMP(const ByteReader& file, const Chunk& chunk) {
    return chunk.name == kAiff.name && chunk.content.size >= kAiff.mark.size() &&
           file.Big32(chunk.content.offset) == FourCharacters("XMP ");
}

} // namespace

bool IsAiff(const ByteReader& file) {
    if (!file.Has(0, kFormHeader) || file.Big32(0) != FourCharacters("FORM")) {
        return false;
    }
    const std::uint32_t type = file.Big32(kChunkHeader);
    return type == FourCharacters("AIFF") || type == FourCharacters("AIFC");
}

std::unique_ptr<ContainerLayout> ReadAiff(const ByteReader& file) {
    ChunkFindings found;
    found.forms.push_back(ReadForm(file, ChunkOrder::Big, 0, [&](const Chunk& chunk, std::uint64_t before) {
        if (IsOfXMP(file, chunk)) {
            AddPacket(kAiff, chunk, before, found);
        } else if (chunk.name == FourCharacters("SSND")) {
            found.media.push_back(chunk.content);
            RequireFew(found.media.size());
        }
    }));
    RequireLittleBehind(file, found.forms.back());
    return std::make_unique<ChunkLayout>(file, kAiff, std::move(found));
}

} // namespace zonstory

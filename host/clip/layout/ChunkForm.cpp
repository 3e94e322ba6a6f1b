#include "clip/layout/ChunkForm.h"

#include <algorithm>

#include "clip/layout/ContainerLayout.h"
#include "clip/layout/NumberBytes.h"
#include "clip/layout/Padding.h"

namespace zonstory {

namespace {

// Above this a size of 32 bits is a program's way of saying that it does not know yet.
constexpr std::uint64_t kLeastUnknownSize = 0x7FFFF000;
// More than this is no padding and no tag: it may be media of a recorder that had no time to say so.
constexpr std::uint64_t kMostBehind = 65536;

ChunkForm ReadFormHeader(const ByteReader& file, ChunkOrder order, std::uint64_t offset) {
    ChunkForm form;
    form.order = order;
    form.type = file.Big32(offset + kChunkHeader);
    form.begin = offset + kFormHeader;
    form.sizeField = {offset + 4, 4};
    form.size = order == ChunkOrder::Little ? file.Little32(offset + 4) : file.Big32(offset + 4);
    const std::uint32_t name = file.Big32(offset);
    if (name == FourCharacters("RF64") || name == FourCharacters("BW64")) {
        form.longSizes = LongSizes(file, offset);
        if (form.size == LongSizes::kElsewhere && form.longSizes.Exist()) {
            form.sizeField = {form.longSizes.Chunk().offset, 8};
            form.size = form.longSizes.FormSize();
        }
    }
    return form;
}

bool IsSizeUnknown(const ChunkForm& form, std::uint64_t room) {
    return form.size < 4 || (form.sizeField.size == 4 && form.size >= kLeastUnknownSize && form.size > room);
}

void RequireWhole(const ByteReader& file, const ChunkForm& form, const Chunk& chunk) {
    if (!file.Has(chunk.content.offset, chunk.content.size)) {
        if (chunk.content.size >= kLeastUnknownSize && chunk.content.size <= LongSizes::kElsewhere) {
            throw NoExactWay("the length of its media was never filled in");
        }
        throw DamagedFile("is damaged: it ends too early");
    }
    if (chunk.content.End() > form.end) {
        throw NoExactWay("its length and those of its parts contradict each other");
    }
    if (chunk.content.size % 2 != 0 && chunk.next == chunk.content.End()) {
        throw NoExactWay("one of its parts is of odd length and not padded, which leads other programs astray");
    }
}

// Bytes that are no chunk are left where they are, behind what is written, if they are few.
void RequirePadding(const ByteReader& file, ByteRange rest) {
    if (rest.size >= kMostBehind || (rest.size >= kChunkHeader && !IsAllZero(file, rest))) {
        throw NoExactWay("what stands behind its last part is not understood");
    }
}

} // namespace

ChunkForm ReadForm(const ByteReader& file, ChunkOrder order, std::uint64_t offset, const ChunkVisitor& visit) {
    ChunkForm form = ReadFormHeader(file, order, offset);
    const std::uint64_t room = file.Size() - offset - kChunkHeader;
    if (IsSizeUnknown(form, room)) {
        throw NoExactWay("its length was never filled in");
    }
    form.end = offset + kChunkHeader + std::min(form.size, room);
    if (form.longSizes.Exist() && form.end < form.longSizes.Chunk().End()) {
        throw NoExactWay("its length and that of its \"ds64\" chunk contradict each other");
    }
    Chunks chunks(file, order, {form.begin, form.end - form.begin}, &form.longSizes);
    std::uint64_t before = form.begin;
    while (const std::optional<Chunk> chunk = chunks.Next()) {
        RequireWhole(file, form, *chunk);
        visit(*chunk, before);
        before = chunk->content.End();
    }
    if (form.size > room + 1) { // a last pad byte may be counted and missing
        throw NoExactWay("its length and that of the file contradict each other");
    }
    form.chunksEnd = chunks.Position();
    RequirePadding(file, {form.chunksEnd, form.end - std::min(form.end, form.chunksEnd)});
    return form;
}

void RequireLittleBehind(const ByteReader& file, const ChunkForm& last) {
    if (file.Size() - last.end >= kMostBehind) {
        throw NoExactWay("much lies behind what it says is its end");
    }
}

Edit ResizeForm(const ChunkForm& form, std::int64_t growth) {
    const std::uint64_t size = form.size + static_cast<std::uint64_t>(growth); // modulo 2^64: it may shrink
    if (form.sizeField.size == 4 && size >= LongSizes::kElsewhere) {
        throw NoExactWay("its length would pass 4 GB, for which it has no room");
    }
    const auto width = static_cast<std::size_t>(form.sizeField.size);
    return {form.sizeField.offset, form.sizeField.size,
            form.order == ChunkOrder::Little ? LittleBytes(size, width) : BigBytes(size, width)};
}

} // namespace zonstory

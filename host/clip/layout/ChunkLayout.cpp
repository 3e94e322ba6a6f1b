#include "clip/layout/ChunkLayout.h"

#include <algorithm>
#include <utility>

#include "clip/layout/EditOrder.h"
#include "clip/layout/NumberBytes.h"
#include "clip/layout/Padding.h"

namespace zonstory {

namespace {

std::int64_t Growth(const Edit& edit) {
    return static_cast<std::int64_t>(edit.put.size()) - static_cast<std::int64_t>(edit.taken);
}

// Adds a change within a form, and before it that of the form's size.
void AddWithSize(const ChunkForm& form, Edit edit, EditList& edits) {
    if (Growth(edit) != 0) {
        edits.push_back(ResizeForm(form, Growth(edit)));
    }
    edits.push_back(std::move(edit));
}

// The last white space of a packet whose chunk came with the pad byte in front of it, which the file had left out at its
// end: both go together, so that the file is what it was.
constexpr std::string_view kCameWithPad = "\n\n\n";
constexpr std::string_view kClosing = "<?xpacket";

std::string Padded(std::string_view packet, std::uint64_t size, bool cameWithPad) {
    std::string padded = PaddedPacket(packet, static_cast<std::size_t>(size));
    if (const std::size_t closing = padded.rfind(kClosing); cameWithPad && closing != std::string::npos) {
        padded.replace(closing - kCameWithPad.size(), kCameWithPad.size(), kCameWithPad);
    }
    return padded;
}

} // namespace

void AddPacket(const ChunkFormat& format, const Chunk& chunk, std::uint64_t before, ChunkFindings& found) {
    if (chunk.content.size <= format.mark.size()) {
        return;
    }
    if (chunk.content.size > kLongestPacket) {
        throw NoExactWay("its XMP packet is too long");
    }
    found.packets.push_back({chunk, before, found.forms.size()});
    RequireFew(found.packets.size());
}

void RequireFew(std::size_t count) {
    constexpr std::size_t kMost = 1024;
    if (count > kMost) {
        throw NoExactWay("it has more parts than any program makes");
    }
}

ChunkLayout::ChunkLayout(const ByteReader& file, const ChunkFormat& format, ChunkFindings found)
    : mFile(file), mFormat(format), mFound(std::move(found)) {}

std::optional<ByteRange> ChunkLayout::Packet() const {
    return mFound.packets.empty() ? std::nullopt : std::optional(Room());
}

std::vector<std::uint64_t> ChunkLayout::Positions() const {
    std::vector<std::uint64_t> positions = Named();
    std::erase_if(positions, [&](std::uint64_t position) { return position >= mFile.Size(); });
    return positions;
}

EditPlan ChunkLayout::Write(std::string_view packet) const {
    EditPlan plan;
    if (mFound.packets.size() > 1) {
        plan.notes.push_back("holds " + std::to_string(mFound.packets.size()) +
                             " XMP packets; the last one is changed, the others stay");
    }
    if (mFound.packets.empty()) {
        Append(packet, plan.edits);
    } else if (const std::uint64_t size = packet.size() + (CameWithPad() ? kCameWithPad.size() : 0);
               size <= Room().size) {
        Overwrite(packet, plan.edits);
    } else if (const std::uint64_t room = RoomWithFiller(); size <= room) {
        TakeFiller(packet, room, plan.edits);
    } else if (MayMoveFrom(Last().chunk.Begin())) {
        Regrow(packet, plan.edits);
    } else {
        Retire(plan.edits);
        Append(packet, plan.edits);
    }
    return Finished(std::move(plan));
}

EditPlan ChunkLayout::Remove() const {
    EditPlan plan;
    if (!Packet()) {
        return plan;
    }
    const Chunk& chunk = Last().chunk;
    if (!MayMoveFrom(chunk.Begin())) {
        Retire(plan.edits);
        return Finished(std::move(plan));
    }
    const std::uint64_t begin = CameWithPad() && chunk.next == FormOfLast().chunksEnd ? Last().before : chunk.Begin();
    const std::uint64_t end = std::min(chunk.next, FormOfLast().end);
    AddWithSize(FormOfLast(), {begin, end - begin, ""}, plan.edits);
    return Finished(std::move(plan));
}

EditPlan ChunkLayout::Finished(EditPlan plan) const {
    plan.edits = InOrder(std::move(plan.edits));
    for (const std::uint64_t position : Named()) {
        for (const Edit& edit : plan.edits) {
            if (position >= edit.offset && position - edit.offset < edit.taken) {
                throw NoExactWay("an index of it names what is no media");
            }
        }
    }
    return plan;
}

// Whether the last packet's chunk was put behind one whose pad byte was missing.
bool ChunkLayout::CameWithPad() const {
    constexpr std::uint64_t kTail = 64;
    std::string tail(static_cast<std::size_t>(std::min(kTail, Room().size)), '\0');
    mFile.Read(Room().End() - tail.size(), tail.data(), tail.size());
    const std::size_t closing = tail.rfind(kClosing);
    const std::string_view before = std::string_view(tail).substr(0, std::min(closing, tail.size()));
    return Last().before < Last().chunk.Begin() && closing != std::string::npos && before.ends_with(kCameWithPad);
}

// Positions, those too that lead out of the file: in a longer one they would lead to something.
std::vector<std::uint64_t> ChunkLayout::Named() const {
    return mFound.positions ? mFound.positions() : std::vector<std::uint64_t>();
}

// Where the packet's bytes are.
ByteRange ChunkLayout::Room() const {
    const ByteRange& content = Last().chunk.content;
    return {content.offset + mFormat.mark.size(), content.size - mFormat.mark.size()};
}

// How long the packet could be if it took a filler of zeros behind it; nothing without one.
std::uint64_t ChunkLayout::RoomWithFiller() const {
    const ChunkForm& form = FormOfLast();
    const std::uint64_t begin = Last().chunk.next;
    if (begin >= form.end) {
        return 0;
    }
    const std::optional<Chunk> next = Chunks(mFile, mFormat.order, {begin, form.end - begin}, &form.longSizes).Next();
    const bool isFiller = next && next->name == mFormat.filler && next->next <= form.end;
    return isFiller && IsAllZero(mFile, next->content) ? next->next - Room().offset : 0;
}

// Whether nothing that has to stay in its place lies behind.
bool ChunkLayout::MayMoveFrom(std::uint64_t offset) const {
    const std::vector<std::uint64_t> positions = Named();
    return std::all_of(mFound.media.begin(), mFound.media.end(),
                       [&](const ByteRange& media) { return media.End() <= offset; }) &&
           std::all_of(positions.begin(), positions.end(), [&](std::uint64_t position) { return position < offset; });
}

void ChunkLayout::Overwrite(std::string_view packet, EditList& edits) const {
    const ByteRange room = Room();
    AddOverwrite(mFile, room.offset, Padded(packet, room.size, CameWithPad()), edits);
}

// What is left of the filler stays one, if it is enough for that.
void ChunkLayout::TakeFiller(std::string_view packet, std::uint64_t room, EditList& edits) const {
    const std::string wanted = Unit(packet, CameWithPad());
    const std::uint64_t begin = Last().chunk.Begin();
    const std::uint64_t whole = Room().offset + room - begin;
    std::string bytes;
    if (wanted.size() + kChunkHeader <= whole) {
        bytes = wanted + Header(mFormat.filler, whole - wanted.size() - kChunkHeader);
    } else {
        bytes = Header(mFormat.name, whole - kChunkHeader).append(mFormat.mark) + Padded(packet, room, CameWithPad());
    }
    edits.push_back({begin, bytes.size(), std::move(bytes)});
}

void ChunkLayout::Regrow(std::string_view packet, EditList& edits) const {
    const Chunk& chunk = Last().chunk;
    const std::uint64_t end = std::min(chunk.next, FormOfLast().end);
    AddWithSize(FormOfLast(), {chunk.Begin(), end - chunk.Begin(), Unit(packet, CameWithPad())}, edits);
}

// Nothing of the old packet is left to be found by those who search for one byte by byte.
void ChunkLayout::Retire(EditList& edits) const {
    const ByteRange& content = Last().chunk.content;
    std::string bytes = Header(mFormat.filler, content.size);
    bytes.resize(bytes.size() + static_cast<std::size_t>(content.size));
    edits.push_back({Last().chunk.Begin(), bytes.size(), std::move(bytes)});
}

void ChunkLayout::Append(std::string_view packet, EditList& edits) const {
    const ChunkForm& form = mFound.forms.back();
    const std::uint64_t offset = std::min(form.chunksEnd, form.end);
    if (!MayMoveFrom(offset)) {
        throw NoExactWay("an index of it names what lies behind its end");
    }
    const std::string pad(static_cast<std::size_t>(form.chunksEnd - offset), '\0');
    AddWithSize(form, {offset, 0, pad + Unit(packet, !pad.empty())}, edits);
}

std::string ChunkLayout::Header(std::uint32_t name, std::uint64_t size) const {
    return BigBytes(name, 4) + (mFormat.order == ChunkOrder::Little ? LittleBytes(size, 4) : BigBytes(size, 4));
}

// A chunk with room of its own, and of even length.
std::string ChunkLayout::Unit(std::string_view packet, bool cameWithPad) const {
    std::size_t size = mFormat.mark.size() + packet.size() + kOwnWhiteSpace;
    size += size % 2;
    if (size >= LongSizes::kElsewhere) {
        throw NoExactWay("the packet is too long for its size field");
    }
    return Header(mFormat.name, size).append(mFormat.mark) + Padded(packet, size - mFormat.mark.size(), cameWithPad);
}

} // namespace zonstory

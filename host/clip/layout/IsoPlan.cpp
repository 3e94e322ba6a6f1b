#include "clip/layout/IsoPlan.h"

#include <algorithm>
#include <limits>

#include "clip/layout/BoxEdits.h"
#include "clip/layout/NumberBytes.h"
#include "clip/layout/Padding.h"

namespace zonstory {

namespace {

constexpr std::uint32_t kFree = FourCharacters("free");
constexpr std::uint64_t kShortHeader = 8;
// A packet in user data has a size of 64 bits where the user data was there before it, and empty. Else user data that
// holds nothing but a packet goes with the packet.
constexpr std::uint64_t kLongHeader = 16;
// What free space in front of a packet says where the box before it went on to the end of the file and had no size.
const std::string kWasOpen = "was open";

constexpr std::uint64_t kLongestPadding = std::uint64_t{1} << 24; // nobody left more for what is to come
constexpr std::uint64_t kBlock = 4096; // of file systems: media moved by so much still shares its blocks

std::string FreeBox(std::uint64_t size) {
    return BoxHeader(kFree, size) + std::string(static_cast<std::size_t>(size - kShortHeader), '\0');
}

bool IsFreeSpace(const Box& box) {
    return box.type == kFree || box.type == FourCharacters("skip");
}

// What one change of a file comes to.
class Planner {
public:
    explicit Planner(const IsoFile& iso) : mIso(iso), mFile(iso.file) {}

    void Write(std::string_view packet);
    void Remove(const PacketBox& old);
    EditPlan Take() {
        mPlan.edits = mEdits.Take(mFile, mIso.index);
        return std::move(mPlan);
    }

private:
    enum class Rest { IsPadding, HoldsNoMedia, HoldsMedia };

    Rest Behind(std::uint64_t offset) const;
    bool IsPadding(const Box* box) const;
    bool HasOtherInFile() const;
    void RequireKnownPositions() const;
    void RequireReadableIndex() const;

    void NoteOthers(std::size_t count);
    bool Overwrite(const PacketBox& old, std::string_view packet);
    bool GrowIntoPadding(const PacketBox& old, std::string_view packet);
    void Grow(const PacketBox& old, std::string_view packet);
    void Append(std::string_view packet);
    void AddToIndex(std::string_view packet);
    std::uint64_t SizeWithWhiteSpace(std::string_view packet, const Box& outermost, std::uint64_t around) const;
    void MakeRoom(const Box& box, std::uint64_t count);
    void GiveBack(const Box& box, std::uint64_t count);
    void RemoveFromFile(const Box& box);
    void RemoveFromIndex(const PacketBox& old);

    const IsoFile& mIso;
    const ByteReader& mFile;
    BoxEdits mEdits;
    EditPlan mPlan;
};

Planner::Rest Planner::Behind(std::uint64_t offset) const {
    Rest rest = Rest::IsPadding;
    for (const Box& box : mIso.boxes.boxes) {
        if (box.offset < offset) {
            continue;
        }
        if (box.type == FourCharacters("mdat") || box.type == FourCharacters("moof")) {
            return Rest::HoldsMedia;
        }
        const bool isPadding =
            IsFreeSpace(box) || box.type == FourCharacters("wide") || box.type == FourCharacters("mfra");
        rest = isPadding ? rest : Rest::HoldsNoMedia;
    }
    return rest;
}

bool Planner::IsPadding(const Box* box) const {
    return box != nullptr && IsFreeSpace(*box) && !box->isOpen && box->size <= kLongestPadding &&
           IsAllZero(mFile, box->Content());
}

bool Planner::HasOtherInFile() const {
    return std::any_of(mIso.packets.others.begin(), mIso.packets.others.end(),
                       [](const PacketBox& other) { return other.around.empty(); });
}

void Planner::RequireKnownPositions() const {
    if (!mIso.index.doubt.empty()) {
        throw NoExactWay(mIso.index.doubt);
    }
}

void Planner::RequireReadableIndex() const {
    if (mIso.index.isCompressed) {
        throw NoExactWay("its index is compressed");
    }
}

void Planner::NoteOthers(std::size_t count) {
    if (count > 0) {
        mPlan.notes.emplace_back("it holds another XMP packet, which stays as it is");
    }
}

void Planner::Write(std::string_view packet) {
    NoteOthers(mIso.packets.others.size());
    if (!mIso.packets.own) {
        mIso.isQuickTime ? AddToIndex(packet) : Append(packet);
        return;
    }
    const PacketBox& old = *mIso.packets.own;
    if (Overwrite(old, packet) || GrowIntoPadding(old, packet)) {
        return;
    }
    const bool staysFirst = !old.around.empty() || Behind(old.box.End()) == Rest::IsPadding || HasOtherInFile();
    if (staysFirst) {
        Grow(old, packet);
        return;
    }
    mEdits.Clear(old.box);
    Append(packet);
}

bool Planner::Overwrite(const PacketBox& old, std::string_view packet) {
    if (packet.size() > old.room.size) {
        return false;
    }
    std::string before(static_cast<std::size_t>(old.room.size), '\0');
    mFile.Read(old.room.offset, before.data(), before.size());
    if (std::string after = PaddedPacket(packet, old.room.size); after != before) {
        mEdits.Replace(old.room, std::move(after));
    }
    return true;
}

bool Planner::GrowIntoPadding(const PacketBox& old, std::string_view packet) {
    const Box* const next = old.next ? &*old.next : nullptr;
    const std::uint64_t more = packet.size() - old.room.size;
    if (!IsPadding(next) || next->Content().size < more) {
        return false;
    }
    mEdits.Replace(old.room, std::string(packet));
    mEdits.Resize(old.box, old.box.size + more);
    mEdits.Replace({next->offset, next->header + more}, BoxHeader(next->type, next->size - more, next->header));
    return true;
}

void Planner::Grow(const PacketBox& old, std::string_view packet) {
    std::vector<Box> boxes = old.around;
    boxes.insert(boxes.begin(), old.box);
    const std::uint64_t size = SizeWithWhiteSpace(packet, boxes.back(), 0 - old.room.size);
    mEdits.Replace(old.room, PaddedPacket(packet, size));
    for (const Box& box : boxes) {
        mEdits.Resize(box, box.size + size - old.room.size);
    }
    MakeRoom(boxes.back(), size - old.room.size);
}

void Planner::Append(std::string_view packet) {
    const std::vector<Box>& boxes = mIso.boxes.boxes;
    const bool endsInAccess = boxes.back().type == FourCharacters("mfra");
    std::string put = kXMPIdentifier + PaddedPacket(packet, packet.size() + kOwnWhiteSpace);
    put.insert(0, BoxHeader(FourCharacters("uuid"), put.size() + kShortHeader));
    if (const Box& last = boxes.back(); last.isOpen && !endsInAccess) {
        mEdits.Replace({last.offset, last.header}, BoxHeader(last.type, last.size));
        put.insert(0, BoxHeader(kFree, kShortHeader + kWasOpen.size()) + kWasOpen);
    }
    mEdits.Insert(endsInAccess ? boxes.back().offset : mIso.boxes.end, std::move(put));
}

void Planner::AddToIndex(std::string_view packet) {
    RequireReadableIndex();
    const Box& index = *mIso.boxes.Find(FourCharacters("moov"));
    const BoxList inIndex = ReadInnerBoxes(mFile, index.Content());
    const Box* const userData = inIndex.Find(FourCharacters("udta"));
    const bool isEmpty = userData != nullptr && userData->Content().size == 0;
    const std::uint64_t header = isEmpty ? kLongHeader : kShortHeader;
    const std::uint64_t around = header + (userData == nullptr ? kShortHeader : 0);

    const std::uint64_t size = SizeWithWhiteSpace(packet, index, around);
    std::string put = BoxHeader(FourCharacters("XMP_"), header + size, header) + PaddedPacket(packet, size);
    std::uint64_t offset = inIndex.end;
    if (userData == nullptr) {
        put.insert(0, BoxHeader(FourCharacters("udta"), kShortHeader + put.size()));
    } else {
        offset = ReadInnerBoxes(mFile, userData->Content()).end;
        mEdits.Resize(*userData, userData->size + put.size());
    }
    mEdits.Resize(index, index.size + put.size());
    mEdits.Insert(offset, std::move(put));
    MakeRoom(index, around + size);
}

// Free space behind an index in front of the media is used up by what must go there, white space only if it fits, too.
std::uint64_t Planner::SizeWithWhiteSpace(std::string_view packet, const Box& outermost, std::uint64_t around) const {
    const Box* const next = mIso.boxes.At(outermost.End());
    const std::uint64_t least = packet.size() + around;
    const bool isTight = Behind(outermost.End()) == Rest::HoldsMedia && IsPadding(next) &&
                         next->Content().size >= least && next->Content().size < least + kOwnWhiteSpace;
    return packet.size() + (isTight ? 0 : kOwnWhiteSpace);
}

// A box at the top level has become longer.
void Planner::MakeRoom(const Box& box, std::uint64_t count) {
    const Rest rest = Behind(box.End());
    if (rest == Rest::IsPadding) {
        return;
    }
    const Box* const next = mIso.boxes.At(box.End());
    if (rest == Rest::HoldsMedia && IsPadding(next) && next->Content().size >= count) {
        mEdits.Replace({next->offset, next->header + count}, BoxHeader(next->type, next->size - count, next->header));
        return;
    }
    RequireKnownPositions();
    if (rest == Rest::HoldsNoMedia) {
        return;
    }
    const Box* const fragment = mIso.boxes.Find(FourCharacters("moof"));
    if (fragment != nullptr && fragment->offset < box.offset) {
        throw NoExactWay("its index lies between its fragments");
    }
    const std::uint64_t moved = (count + kOwnWhiteSpace + kBlock - 1) / kBlock * kBlock;
    mEdits.Insert(box.End(), FreeBox(moved - count));
    mPlan.notes.push_back("its media moves by " + std::to_string(moved) +
                          " bytes, since its index in front of it grows");
}

void Planner::Remove(const PacketBox& old) {
    NoteOthers(mIso.packets.others.size() - (mIso.packets.own ? 0 : 1));
    old.around.empty() ? RemoveFromFile(old.box) : RemoveFromIndex(old);
}

void Planner::RemoveFromFile(const Box& box) {
    if (Behind(box.End()) != Rest::IsPadding) {
        mEdits.Clear(box);
        return;
    }
    const std::uint64_t markSize = kShortHeader + kWasOpen.size();
    const std::vector<Box>& boxes = mIso.boxes.boxes;
    std::uint64_t begin = box.offset;
    if (boxes.size() > 2 && box.End() == mFile.Size()) {
        const Box& mark = boxes[boxes.size() - 2];
        const Box& open = boxes[boxes.size() - 3];
        std::string content(kWasOpen.size(), '\0');
        if (mark.type == kFree && mark.size == markSize && open.header == kShortHeader) {
            mFile.Read(mark.offset + kShortHeader, content.data(), content.size());
        }
        if (content == kWasOpen) {
            begin = mark.offset;
            mEdits.Replace({open.offset, 4}, BigBytes(0, 4));
        }
    }
    mEdits.Replace({begin, box.End() - begin}, {});
}

void Planner::RemoveFromIndex(const PacketBox& old) {
    RequireReadableIndex();
    const Box& userData = old.around.front();
    const Box& index = old.around.back();
    const bool goesWhole = old.isOnlyOne && old.box.header == kShortHeader;
    const Box& gone = goesWhole ? userData : old.box;
    mEdits.Replace({gone.offset, gone.size}, {});
    if (!goesWhole) {
        mEdits.Resize(userData, userData.size - gone.size);
    }
    mEdits.Resize(index, index.size - gone.size);
    GiveBack(index, gone.size);
}

// A box at the top level has become shorter.
void Planner::GiveBack(const Box& box, std::uint64_t count) {
    const Rest rest = Behind(box.End());
    if (rest == Rest::HoldsNoMedia) {
        RequireKnownPositions();
    }
    if (rest != Rest::HoldsMedia) {
        return;
    }
    const Box* const next = mIso.boxes.At(box.End());
    if (!IsPadding(next)) {
        mEdits.Insert(box.End(), FreeBox(count));
        return;
    }
    mEdits.Replace({next->offset, next->header}, BoxHeader(next->type, next->size + count, next->header) +
                                                     std::string(static_cast<std::size_t>(count), '\0'));
}

void RequireUsual(const PacketBox& old) {
    if (old.box.isOpen || old.room.size > kLongestPacket) {
        throw NoExactWay(old.box.isOpen ? "the box of its XMP packet has no size" : "its XMP packet is too large");
    }
}

} // namespace

EditPlan PlanIsoWrite(const IsoFile& iso, std::string_view packet) {
    if (iso.packets.own) {
        RequireUsual(*iso.packets.own);
    }
    Planner planner(iso);
    planner.Write(packet);
    return planner.Take();
}

EditPlan PlanIsoRemove(const IsoFile& iso) {
    if (!iso.packets.own && iso.packets.others.empty()) {
        return {};
    }
    const PacketBox& old = iso.packets.own ? *iso.packets.own : iso.packets.others.front();
    RequireUsual(old);
    Planner planner(iso);
    planner.Remove(old);
    return planner.Take();
}

} // namespace zonstory

#include "clip/layout/Id3Layout.h"

#include <algorithm>
#include <utility>

#include "clip/layout/EditOrder.h"
#include "clip/layout/Id3Tag.h"
#include "clip/layout/NumberBytes.h"
#include "clip/layout/Padding.h"

namespace zonstory {

namespace {

constexpr std::int64_t kStep = 4096; // by a multiple of which media moves, so that its blocks can be shared
constexpr std::string_view kXMPOwner("XMP\0", 4);

std::int64_t UpToStep(std::int64_t size) {
    return (size + kStep - 1) / kStep * kStep;
}

void RequireTagSize(std::uint64_t size) {
    if (size >= std::uint64_t{1} << 28) {
        throw NoExactWay("its tag would pass 256 MB, for which ID3 has no room");
    }
}

std::string MovesBy(std::int64_t growth) {
    return "its media moves by " + std::to_string(growth) + " bytes, since its tag in front of it " +
           (growth > 0 ? "grows" : "goes");
}

bool IsLayer3(const ByteReader& file, std::uint64_t offset) {
    if (!file.Has(offset, 4)) {
        return false;
    }
    const std::uint32_t header = file.Big32(offset);
    const bool isSync = header >> 21 == 0x7FF;
    const bool hasVersion = (header >> 19 & 3) != 1;
    const bool isThird = (header >> 17 & 3) == 1;
    return isSync && hasVersion && isThird && (header >> 12 & 15) != 15 && (header >> 10 & 3) != 3;
}

// Behind the first tag there may be others, which players pass over as well, and zeros.
bool LeadsToLayer3(const ByteReader& file, std::uint64_t offset) {
    constexpr std::uint64_t kMostZeros = 65536;
    while (IsId3Tag(file, offset)) {
        offset = EndOfId3Tag(file, offset);
    }
    for (const std::uint64_t begin = offset; file.Has(offset, 4) && offset - begin < kMostZeros; ++offset) {
        if (file.Big32(offset) >> 24 != 0) {
            break;
        }
    }
    return IsLayer3(file, offset);
}

class Id3Layout final : public ContainerLayout {
public:
    Id3Layout(const ByteReader& file, Id3Tag tag) : mFile(file), mTag(std::move(tag)) {}

    std::optional<ByteRange> Packet() const override {
        return mTag.packets.empty() ? std::nullopt : std::optional(mTag.packets.front().packet);
    }
    // The tags at the end of the file are part of it: they stay as the media does.
    std::vector<ByteRange> Media() const override { return {{mTag.MediaBegin(), mFile.Size() - mTag.MediaBegin()}}; }
    std::vector<std::uint64_t> Positions() const override { return {}; }
    EditPlan Write(std::string_view packet) const override;
    EditPlan Remove() const override;

private:
    // The frame that is replaced: where there is none, an empty place at the end of the frames.
    ByteRange OldFrame() const {
        return mTag.packets.empty() ? ByteRange{mTag.framesEnd, 0} : mTag.packets.front().frame;
    }
    std::uint64_t HeadSize() const;
    bool IsWritable(std::uint64_t frameSize) const;
    std::uint64_t FrameSizeFor(std::string_view packet) const;
    std::string Frame(std::string_view packet, std::uint64_t size) const;

    EditPlan NewTag(std::string_view packet) const;
    EditPlan Replaced(std::string frame) const;
    void AddGrowth(std::int64_t growth, EditPlan& plan) const;
    void AddPadding(std::int64_t more, EditList& edits) const;

    const ByteReader& mFile;
    Id3Tag mTag;
};

EditPlan Id3Layout::Write(std::string_view packet) const {
    EditPlan plan;
    if (!mTag.Exists()) {
        plan = NewTag(packet);
    } else if (const auto old = Packet(); old && packet.size() <= old->size) {
        AddOverwrite(mFile, old->offset, PaddedPacket(packet, static_cast<std::size_t>(old->size)), plan.edits);
    } else {
        plan = Replaced(Frame(packet, FrameSizeFor(packet)));
    }
    if (mTag.packets.size() > 1) {
        plan.notes.push_back("holds " + std::to_string(mTag.packets.size()) +
                             " XMP packets; the first one is changed, the others stay");
    }
    return plan;
}

EditPlan Id3Layout::Remove() const {
    if (!Packet()) {
        return {};
    }
    // A tag without a frame is none. One that is not of this program's length may have had another reason to be there.
    const bool isAllOfIt = mTag.frameCount == 1 && !mTag.hasExtendedHeader && mTag.MediaBegin() % kStep == 0;
    return isAllOfIt ? EditPlan{{{0, mTag.MediaBegin(), ""}}, {MovesBy(-static_cast<std::int64_t>(mTag.MediaBegin()))}}
                     : Replaced("");
}

// What stands before the packet in its frame: the frame's header, what its flags put there, and whose it is.
std::uint64_t Id3Layout::HeadSize() const {
    return kId3Header + (mTag.packets.empty() ? 0 : mTag.packets.front().prefix) + kXMPOwner.size();
}

// In an unsynchronised tag of version 3 a size with 0xFF in it would have to be changed as well.
bool Id3Layout::IsWritable(std::uint64_t frameSize) const {
    const bool isChangeable = mTag.version == 3 && mTag.isUnsynchronised;
    return !isChangeable || BigBytes(frameSize - kId3Header, 4).find('\xFF') == std::string::npos;
}

std::uint64_t Id3Layout::FrameSizeFor(std::string_view packet) const {
    const std::uint64_t least = HeadSize() + packet.size();
    const std::uint64_t wanted = least + kOwnWhiteSpace;
    const std::uint64_t old = OldFrame().size;
    for (std::uint64_t size = std::min(wanted, old + mTag.Padding()); size >= least; --size) {
        if (IsWritable(size)) {
            return size;
        }
    }
    const std::uint64_t step = mTag.hasFooter ? kStep : 1; // without padding the white space makes up the step
    std::uint64_t size = old + (wanted - old + step - 1) / step * step;
    while (!IsWritable(size)) {
        size += step;
    }
    return size;
}

std::string Id3Layout::Frame(std::string_view packet, std::uint64_t size) const {
    const std::uint64_t content = size - kId3Header;
    std::string between(mTag.version == 4 && mTag.isUnsynchronised ? std::string("\0\2", 2) : std::string(2, '\0'));
    if (!mTag.packets.empty()) {
        const Id3Packet& old = mTag.packets.front();
        between.resize(static_cast<std::size_t>(2 + old.prefix));
        mFile.Read(old.packet.offset - kXMPOwner.size() - between.size(), between.data(), between.size());
        if (old.statesLength) {
            between.replace(between.size() - 4, 4, SevenBitBytes(content - old.prefix));
        }
    }
    const std::string head = "PRIV" + (mTag.version == 4 ? SevenBitBytes(content) : BigBytes(content, 4)) + between;
    return head + std::string(kXMPOwner) + PaddedPacket(packet, static_cast<std::size_t>(size - HeadSize()));
}

// In front of a file without a tag.
EditPlan Id3Layout::NewTag(std::string_view packet) const {
    const std::string frame = Frame(packet, HeadSize() + packet.size() + kOwnWhiteSpace);
    const std::int64_t growth = UpToStep(static_cast<std::int64_t>(kId3Header + frame.size()));
    const auto size = static_cast<std::uint64_t>(growth);
    RequireTagSize(size);
    std::string tag = std::string("ID3\3\0\0", 6) + SevenBitBytes(size - kId3Header) + frame;
    tag.resize(static_cast<std::size_t>(size));
    return {{{0, 0, std::move(tag)}}, {MovesBy(growth)}};
}

EditPlan Id3Layout::Replaced(std::string frame) const {
    const ByteRange old = OldFrame();
    const auto longer = static_cast<std::int64_t>(frame.size()) - static_cast<std::int64_t>(old.size);
    const auto padding = static_cast<std::int64_t>(mTag.Padding());
    const std::int64_t growth = mTag.hasFooter ? longer : longer > padding ? UpToStep(longer - padding) : 0;
    EditPlan plan;
    plan.edits.push_back({old.offset, old.size, std::move(frame)});
    if (growth != 0) {
        AddGrowth(growth, plan);
    }
    if (growth != longer) {
        AddPadding(growth - longer, plan.edits);
    }
    plan.edits = InOrder(std::move(plan.edits));
    return plan;
}

// The tag, and so the way to the media, becomes longer.
void Id3Layout::AddGrowth(std::int64_t growth, EditPlan& plan) const {
    constexpr std::uint64_t kSizeField = 6;
    if (mTag.namesPlaces) {
        throw NoExactWay("its tag has no room, and names places in the file that would move");
    }
    if (growth % kStep != 0) {
        throw NoExactWay("its tag has a footer, and so no room for padding in the place of the packet");
    }
    const std::uint64_t size = mTag.end - kId3Header + static_cast<std::uint64_t>(growth); // modulo 2^64: or shorter
    RequireTagSize(size);
    plan.edits.push_back({kSizeField, 4, SevenBitBytes(size)});
    if (mTag.hasFooter) {
        plan.edits.push_back({mTag.end + kSizeField, 4, SevenBitBytes(size)});
    }
    plan.notes.push_back(MovesBy(growth));
}

void Id3Layout::AddPadding(std::int64_t more, EditList& edits) const {
    if (!IsAllZero(mFile, {mTag.framesEnd, mTag.Padding()})) {
        throw NoExactWay("the end of its tag is no padding");
    }
    const auto taken = static_cast<std::uint64_t>(std::max<std::int64_t>(-more, 0));
    edits.push_back(
        {mTag.framesEnd, taken, std::string(static_cast<std::size_t>(std::max<std::int64_t>(more, 0)), '\0')});
    if (mTag.paddingField) {
        const std::uint64_t padding = mTag.Padding() + static_cast<std::uint64_t>(more); // modulo 2^64
        edits.push_back({*mTag.paddingField, 4, BigBytes(padding, 4)});
    }
}

} // namespace

bool IsMp3(const ByteReader& file) {
    return IsId3Tag(file, 0) || IsLayer3(file, 0);
}

std::unique_ptr<ContainerLayout> ReadMp3(const ByteReader& file) {
    Id3Tag tag = ReadId3Tag(file);
    if (!LeadsToLayer3(file, tag.MediaBegin())) {
        throw NoExactWay("what follows its tag is no MP3");
    }
    return std::make_unique<Id3Layout>(file, std::move(tag));
}

} // namespace zonstory

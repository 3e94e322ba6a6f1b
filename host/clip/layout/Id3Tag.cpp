#include "clip/layout/Id3Tag.h"

#include <utility>

#include "clip/layout/ContainerLayout.h"
#include "clip/layout/Id3Cursor.h"
#include "clip/layout/NumberBytes.h"
#include "clip/layout/Padding.h"

namespace zonstory {

namespace {

// Flags of a tag.
constexpr unsigned kUnsynchronised = 0x80;
constexpr unsigned kExtended = 0x40;
constexpr unsigned kFooter = 0x10;

constexpr std::uint64_t kOwnerSize = 4; // of "XMP" and a zero, what a private frame of XMP begins with

std::uint64_t FromSevenBits(std::uint32_t bytes) {
    if ((bytes & 0x80808080) != 0) {
        throw NoExactWay("a length in its tag is not written as ID3 has it");
    }
    return (bytes & 0x7F) | (bytes >> 1 & 0x3F80) | (bytes >> 2 & 0x1FC000) | (bytes >> 3 & 0xFE00000);
}

struct Frame {
    std::uint32_t name = 0;
    std::uint64_t size = 0; // as it is stated
    unsigned flags = 0;
    ByteRange whole;   // in the file
    ByteRange content; // in the file
};

bool IsFrameName(std::uint32_t name) {
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t character = name >> shift & 0xFF;
        if ((character < 'A' || character > 'Z') && (character < '0' || character > '9')) {
            return false;
        }
    }
    return true;
}

// Which flags of a frame matter, by version.
struct FrameFlags {
    unsigned changed; // compressed or encrypted
    unsigned group;   // a byte in front of the content
    unsigned length;  // four bytes there
    unsigned unsynchronised;
};
constexpr FrameFlags kFlags3{0xC0, 0x20, 0, 0};
constexpr FrameFlags kFlags4{0x0C, 0x40, 0x01, 0x02};

class Reading {
public:
    explicit Reading(const ByteReader& file) : mFile(file) {}

    Id3Tag Read() {
        const unsigned flags = ReadHeader();
        Id3Cursor cursor(mFile, kId3Header, mTag.end, mTag.isUnsynchronised && mTag.version == 3);
        if ((flags & kExtended) != 0) {
            ReadExtendedHeader(cursor);
        }
        while (cursor.Left() >= kId3Header && mFile.Big32(cursor.Position()) >> 24 != 0) {
            Add(ReadFrame(cursor));
        }
        mTag.framesEnd = cursor.Position();
        if (mTag.hasFooter && mTag.Padding() > 0) {
            throw NoExactWay("its tag has padding in front of a footer");
        }
        if (mTag.paddingField && mFile.Big32(*mTag.paddingField) != mTag.Padding()) {
            mTag.paddingField.reset(); // stale already, so nobody counts on it
        }
        return std::move(mTag);
    }

private:
    unsigned ReadHeader() {
        mTag.version = static_cast<int>(mFile.Big32(3) >> 24);
        if (mTag.version != 3 && mTag.version != 4) {
            throw NoExactWay(mTag.version == 2 ? "its tag is ID3v2.2, which has no place for XMP"
                                               : "its tag is of a version of ID3 that is not known");
        }
        const unsigned flags = mFile.Big32(2) & 0xFF;
        if ((flags & (mTag.version == 3 ? 0x1F : 0x0F)) != 0) {
            throw NoExactWay("its tag has a flag that is not known");
        }
        mTag.isUnsynchronised = (flags & kUnsynchronised) != 0;
        mTag.hasExtendedHeader = (flags & kExtended) != 0;
        mTag.hasFooter = (flags & kFooter) != 0;
        mTag.end = kId3Header + FromSevenBits(mFile.Big32(6));
        if (mTag.MediaBegin() > mFile.Size()) {
            throw DamagedFile("is damaged: its tag ends beyond the file");
        }
        return flags;
    }

    void ReadExtendedHeader(Id3Cursor& cursor) {
        constexpr unsigned kCheckedOrRestricted = 0x30;
        if (mTag.version == 3) {
            const std::uint64_t size = cursor.Next32(); // does not count itself
            const bool isChecked = (cursor.Next16() & 0x8000) != 0;
            RequireSimple(size == 6 && !isChecked && !mTag.isUnsynchronised);
            mTag.paddingField = cursor.Position();
            cursor.Skip(4);
            return;
        }
        const std::uint64_t size = FromSevenBits(cursor.Next32()); // counts itself
        const std::uint32_t flags = cursor.Next16();               // the length of the flags, and they
        RequireSimple(size >= 6 && flags >> 8 == 1 && (flags & kCheckedOrRestricted) == 0);
        cursor.Skip(size - 6);
    }

    static void RequireSimple(bool isSimple) {
        if (!isSimple) {
            throw NoExactWay("the extended header of its tag holds more than is understood");
        }
    }

    Frame ReadFrame(Id3Cursor& cursor) const {
        Frame frame;
        frame.whole.offset = cursor.Position();
        frame.name = cursor.Next32();
        if (!IsFrameName(frame.name)) {
            throw NoExactWay("its tag holds what is no frame of ID3");
        }
        const std::uint32_t size = cursor.Next32();
        frame.size = mTag.version == 3 ? size : FromSevenBits(size);
        frame.flags = cursor.Next16() & 0xFF;
        frame.content.offset = cursor.Position();
        cursor.Skip(frame.size);
        frame.content.size = cursor.Position() - frame.content.offset;
        frame.whole.size = cursor.Position() - frame.whole.offset;
        return frame;
    }

    void Add(const Frame& frame) {
        ++mTag.frameCount;
        if (frame.name == FourCharacters("PRIV")) {
            AddPrivate(frame);
        }
        mTag.namesPlaces = mTag.namesPlaces || frame.name == FourCharacters("ASPI") ||
                           (frame.name == FourCharacters("CHAP") && NamesPlaces(frame));
    }

    // A name, a zero, two times, and then two places in the file, or ones or zeros where the times alone count.
    bool NamesPlaces(const Frame& frame) const {
        Id3Cursor cursor(mFile, frame.content.offset, frame.content.End(), mTag.isUnsynchronised);
        while (cursor.Left() > 0 && cursor.Next8() != 0) {
        }
        if (cursor.Left() < 16) {
            return false;
        }
        cursor.Skip(8);
        const std::uint32_t begin = cursor.Next32();
        const std::uint32_t end = cursor.Next32();
        return begin + 1 > 1 || end + 1 > 1;
    }

    void AddPrivate(const Frame& frame) {
        const FrameFlags& flags = mTag.version == 3 ? kFlags3 : kFlags4;
        if ((frame.flags & flags.changed) != 0) {
            throw NoExactWay("a private frame of its tag is compressed or encrypted");
        }
        const bool statesLength = (frame.flags & flags.length) != 0;
        const std::uint64_t prefix = ((frame.flags & flags.group) != 0 ? 1 : 0) + (statesLength ? 4 : 0);
        const std::uint64_t start = prefix + kOwnerSize;
        if (frame.content.size <= start || mFile.Big32(frame.content.offset + prefix) != FourCharacters("XMP\0")) {
            return;
        }
        const ByteRange packet{frame.content.offset + start, frame.content.size - start};
        RequirePlain(frame, packet);
        constexpr std::size_t kMostPackets = 1024;
        if (mTag.packets.size() >= kMostPackets) {
            throw NoExactWay("it has more XMP packets than any program makes");
        }
        mTag.packets.push_back({frame.whole, packet, prefix, statesLength});
    }

    // A packet in UTF-8 has no byte that unsynchronisation would change.
    void RequirePlain(const Frame& frame, const ByteRange& packet) const {
        if (packet.size > kLongestPacket) {
            throw NoExactWay("its XMP packet is too long");
        }
        std::string bytes(static_cast<std::size_t>(packet.size), '\0');
        mFile.Read(packet.offset, bytes.data(), bytes.size());
        if (frame.content.size != frame.size || bytes.find('\xFF') != std::string::npos) {
            throw NoExactWay("its XMP packet is not UTF-8");
        }
    }

    const ByteReader& mFile;
    Id3Tag mTag;
};

} // namespace

bool IsId3Tag(const ByteReader& file, std::uint64_t offset) {
    return file.Has(offset, kId3Header) && file.Big32(offset) >> 8 == FourCharacters("ID3 ") >> 8;
}

Id3Tag ReadId3Tag(const ByteReader& file) {
    return IsId3Tag(file, 0) ? Reading(file).Read() : Id3Tag();
}

std::uint64_t EndOfId3Tag(const ByteReader& file, std::uint64_t offset) {
    const bool hasFooter = (file.Big32(offset + 2) & kFooter) != 0;
    return offset + kId3Header + FromSevenBits(file.Big32(offset + 6)) + (hasFooter ? kId3Header : 0);
}

std::string SevenBitBytes(std::uint64_t number) {
    return BigBytes((number & 0x7F) | (number << 1 & 0x7F00) | (number << 2 & 0x7F0000) | (number << 3 & 0x7F000000),
                    4);
}

} // namespace zonstory

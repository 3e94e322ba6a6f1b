#include "clip/Essence.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "clip/Clip.h"
#include "clip/Interrupt.h"
#include "clip/IsoBoxes.h"
#include "clip/RiffChunks.h"

namespace zonstory {

namespace {

Essence FindInIso(const ByteReader& file) {
    const IsoLayout layout = ReadIsoLayout(file);
    Essence essence{true, layout.isFragmented, {}};
    for (const IsoBox& box : layout.boxes) {
        if (box.type == FourCharacters("mdat")) {
            essence.ranges.push_back({box.offset, box.size});
        }
    }
    return essence;
}

// The index of an AVI names positions in the file, in more than one way.
Essence FindInAvi(const ByteReader& file) {
    return {true, true, FindAviMedia(file)};
}

Essence FindInWave(const ByteReader& file) {
    return {true, false, FindWaveMedia(file)};
}

Essence FindInAiff(const ByteReader& file) {
    return {true, false, FindAiffMedia(file)};
}

// Everything between the tags at both ends; a tag gives its length in bytes of seven bits.
Essence FindInMp3(const ByteReader& file) {
    constexpr std::uint64_t kTagHeader = 10;
    constexpr std::uint64_t kEndTag = 128;
    std::uint64_t begin = 0;
    std::uint64_t end = file.Size();
    unsigned char header[kTagHeader] = {};
    if (file.Has(0, kTagHeader)) {
        file.Read(0, header, kTagHeader);
    }
    if (std::memcmp(header, "ID3", 3) == 0) {
        constexpr unsigned char kHasFooter = 0x10;
        begin = kTagHeader + (static_cast<std::uint64_t>(header[6] & 0x7F) << 21 | (header[7] & 0x7FU) << 14 |
                              (header[8] & 0x7FU) << 7 | (header[9] & 0x7FU));
        begin += (header[5] & kHasFooter) != 0 ? kTagHeader : 0;
    }
    if (file.Has(0, kEndTag) && file.Big32(end - kEndTag) >> 8 == FourCharacters("TAG ") >> 8) {
        end -= kEndTag;
    }
    if (begin > end) {
        throw ClipError("is damaged: it ends too early");
    }
    return {true, false, {{begin, end - begin}}};
}

// Objects with a name of 16 bytes and a length of 8 that counts both.
Essence FindInAsf(const ByteReader& file) {
    constexpr unsigned char kDataObject[16] = {0x36, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                               0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
    constexpr std::uint64_t kHeader = 24;
    Essence essence{true, false, {}};
    for (std::uint64_t offset = 0; file.Has(offset, kHeader);) {
        unsigned char name[16];
        file.Read(offset, name, sizeof name);
        const std::uint64_t size = file.Little64(offset + sizeof name);
        if (size < kHeader || !file.Has(offset, size)) {
            throw ClipError("is damaged: it ends too early");
        }
        if (std::memcmp(name, kDataObject, sizeof name) == 0) {
            essence.ranges.push_back({offset + kHeader, size - kHeader});
        }
        offset += size;
    }
    return essence;
}

// Tags of sound and picture; those of data between them hold the metadata. A tag is followed by its length once more.
Essence FindInFlv(const ByteReader& file) {
    constexpr std::uint64_t kTagHeader = 11;
    constexpr std::uint64_t kTrailer = 4;
    constexpr std::uint32_t kSound = 8;
    constexpr std::uint32_t kPicture = 9;
    Essence essence{true, false, {}};
    for (std::uint64_t offset = file.Big32(5) + kTrailer; file.Has(offset, kTagHeader);) {
        const std::uint32_t start = file.Big32(offset);
        const std::uint64_t size = kTagHeader + (start & 0xFFFFFF) + kTrailer;
        if (!file.Has(offset, size)) {
            throw ClipError("is damaged: it ends too early");
        }
        if (const std::uint32_t type = start >> 24; type == kSound || type == kPicture) {
            essence.ranges.push_back({offset, size - kTrailer});
        }
        offset += size;
    }
    return essence;
}

void RequireSameBytes(const ByteReader& before, ByteRange rangeBefore, const ByteReader& after, ByteRange rangeAfter) {
    constexpr std::uint64_t kPiece = std::uint64_t{1} << 18; // two of them stay in the cache of a core
    const auto length = static_cast<std::size_t>(std::min(kPiece, rangeBefore.size));
    const auto buffer = std::make_unique_for_overwrite<std::byte[]>(2 * length);
    std::byte* const bytesBefore = buffer.get();
    std::byte* const bytesAfter = buffer.get() + length;
    for (std::uint64_t done = 0; done < rangeBefore.size;) {
        ThrowIfInterrupted();
        const auto piece = static_cast<std::size_t>(std::min(kPiece, rangeBefore.size - done));
        before.Read(rangeBefore.offset + done, bytesBefore, piece);
        after.Read(rangeAfter.offset + done, bytesAfter, piece);
        if (std::memcmp(bytesBefore, bytesAfter, piece) != 0) {
            throw ClipError("its media would not be the same");
        }
        done += piece;
    }
}

} // namespace

Essence FindEssence(const ByteReader& file, XMP_FileFormat format) {
    switch (format) {
    case kXMP_MOVFile:
    case kXMP_MPEG4File:
        return FindInIso(file);
    case kXMP_AVIFile:
        return FindInAvi(file);
    case kXMP_WAVFile:
        return FindInWave(file);
    case kXMP_AIFFFile:
        return FindInAiff(file);
    case kXMP_MP3File:
        return FindInMp3(file);
    case kXMP_WMAVFile:
        return FindInAsf(file);
    case kXMP_FLVFile:
        return FindInFlv(file);
    default:
        return {};
    }
}

void RequireSameEssence(const ByteReader& before, const Essence& essenceBefore, const ByteReader& after,
                        const Essence& essenceAfter) {
    const auto isSameSize = [](ByteRange left, ByteRange right) { return left.size == right.size; };
    if (!std::equal(essenceBefore.ranges.begin(), essenceBefore.ranges.end(), essenceAfter.ranges.begin(),
                    essenceAfter.ranges.end(), isSameSize)) {
        throw ClipError("its media would not be the same");
    }
    for (std::size_t index = 0; index < essenceBefore.ranges.size(); ++index) {
        RequireSameBytes(before, essenceBefore.ranges[index], after, essenceAfter.ranges[index]);
    }
}

} // namespace zonstory

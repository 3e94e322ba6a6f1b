#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

constexpr std::uint64_t kId3Header = 10; ///< Of a tag, of its footer, of a frame.

/// A frame that holds an XMP packet, as it lies in the file.
struct Id3Packet {
    ByteRange frame; ///< With its header.
    ByteRange packet;
    std::uint64_t prefix = 0;  ///< How many bytes the flags of the frame put in front of its content.
    bool statesLength = false; ///< Whether the last four of them are the content's length.
};

/// The tag at the beginning of an MP3: ID3v2.3 or 2.4.
struct Id3Tag {
    int version = 0; ///< 3 or 4; 0 without a tag.
    bool isUnsynchronised = false;
    bool hasExtendedHeader = false;
    bool hasFooter = false;   ///< Then it has no padding.
    bool namesPlaces = false; ///< In the file, which are others when the media moves.
    std::size_t frameCount = 0;
    std::uint64_t framesEnd = 0;               ///< Where its padding begins.
    std::uint64_t end = 0;                     ///< Where its padding ends.
    std::optional<std::uint64_t> paddingField; ///< Where the length of the padding is stated, if that is true.
    std::vector<Id3Packet> packets;

    bool Exists() const { return version != 0; }
    std::uint64_t Padding() const { return end - framesEnd; }
    std::uint64_t MediaBegin() const { return end + (hasFooter ? kId3Header : 0); }
};

/// Whether a tag begins there, of any version.
bool IsId3Tag(const ByteReader& file, std::uint64_t offset);

/// Reads the tag at the beginning of a file, or finds that there is none. Frames are passed over, but for those of an
/// unsynchronised tag, whose bytes have to be counted.
/// @throws DamagedFile when it ends beyond the file, NoExactWay when it is of a version without XMP, or holds what is not
///         understood.
Id3Tag ReadId3Tag(const ByteReader& file);

/// Where the tag that begins there ends with its footer. @throws NoExactWay when its length is none.
std::uint64_t EndOfId3Tag(const ByteReader& file, std::uint64_t offset);

/// A number below 2^28 as four bytes of seven bits each, which is how tags are measured.
std::string SevenBitBytes(std::uint64_t number);

} // namespace zonstory

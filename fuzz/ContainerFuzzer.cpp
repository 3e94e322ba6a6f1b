// Arbitrary bytes as a clip, its format chosen by the first one: where its media lies, the comparison with itself and
// with a damaged copy, and a packet written over the one in a MOV.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <zonstoryparser/Story.h>

#include "MemoryFile.h"
#include "Toolkit.h"
#include "clip/Clip.h"
#include "clip/Essence.h"
#include "clip/IsoBoxes.h"
#include "clip/MovPacket.h"

namespace {

using namespace zonstory;

constexpr XMP_FileFormat kFormats[] = {kXMP_MPEG4File, kXMP_AVIFile,  kXMP_WAVFile, kXMP_AIFFFile,
                                       kXMP_MP3File,   kXMP_WMAVFile, kXMP_FLVFile};

template <typename Step>
bool IsRefused(Step step) {
    try {
        step();
        return false;
    } catch (const FileError&) {
        return true;
    }
}

// ---- Media -----------------------------------------------------------------------------------------------------------

void CheckMedia(const std::string& bytes, XMP_FileFormat format) {
    static fuzz::MemoryFile file;
    static fuzz::MemoryFile damaged;
    file.Fill(bytes);
    const ByteReader reader(file.Descriptor(), bytes.size());
    const Essence essence = FindEssence(reader, format);
    REQUIRE(essence.isKnown);
    std::uint64_t behind = 0;
    for (const ByteRange& range : essence.ranges) {
        REQUIRE(reader.Has(range.offset, range.size));
        REQUIRE(format == kXMP_AVIFile ||
                range.offset >= behind); // one list of an AVI may say it is longer than its part
        behind = range.offset + range.size;
    }
    RequireSameEssence(reader, essence, reader, essence);
    for (const ByteRange& range : essence.ranges) {
        if (range.size == 0) {
            continue;
        }
        std::string other = bytes;
        other[static_cast<std::size_t>(range.offset + range.size - 1)] ^= 1;
        damaged.Fill(other);
        const ByteReader otherReader(damaged.Descriptor(), other.size());
        REQUIRE(IsRefused([&] { RequireSameEssence(reader, essence, otherReader, essence); }));
        break;
    }
}

// ---- Boxes -----------------------------------------------------------------------------------------------------------

// Boxes follow one another from `begin` on, each with its header in front, none beyond `end`.
void CheckBoxes(const ByteReader& reader, std::uint64_t begin, std::uint64_t end, int depth) {
    for (const IsoBox& box : ReadIsoBoxes(reader, begin, end)) {
        REQUIRE(box.offset == begin + 8 || box.offset == begin + 16);
        REQUIRE(box.offset <= end && box.size <= end - box.offset);
        begin = box.offset + box.size;
        if (depth > 0) {
            IsRefused([&] { CheckBoxes(reader, box.offset, begin, depth - 1); });
        }
    }
    REQUIRE(end - begin < 8);
}

void CheckLayout(const std::string& bytes) {
    static fuzz::MemoryFile file;
    file.Fill(bytes);
    const ByteReader reader(file.Descriptor(), bytes.size());
    CheckBoxes(reader, 0, bytes.size(), 3);
    const IsoLayout layout = ReadIsoLayout(reader);
    try {
        RequireSameMediaPositions(reader, layout, reader, layout);
    } catch (const FileError& error) {
        REQUIRE(std::string_view(error.what()).starts_with("is damaged: "));
    }
}

// ---- The packet in a MOV ---------------------------------------------------------------------------------------------

IsoBox FindPacket(const ByteReader& reader) {
    IsoBox box{0, 0, reader.Size()};
    for (const std::uint32_t type : {FourCharacters("moov"), FourCharacters("udta"), FourCharacters("XMP_")}) {
        box = FindIsoBox(reader, box, type).value_or(IsoBox());
    }
    return box;
}

void CheckPacket(const std::string& bytes) {
    static fuzz::MemoryFile file;
    file.Fill(bytes);
    SXMPMeta xmp;
    zonstoryparser::WriteActionToXMP(u"Rain.", xmp);
    bool isWritten = false;
    IsRefused([&] { isWritten = OverwriteMovPacket(file.Descriptor(), xmp); });
    const std::string after = file.Contents();
    if (!isWritten) {
        REQUIRE(after == bytes);
        return;
    }
    const IsoBox place = FindPacket(ByteReader(file.Descriptor(), after.size()));
    const auto offset = static_cast<std::size_t>(place.offset);
    const auto size = static_cast<std::size_t>(place.size);
    REQUIRE(after.size() == bytes.size());
    REQUIRE(after.substr(0, offset) == bytes.substr(0, offset));
    REQUIRE(after.substr(offset + size) == bytes.substr(offset + size));
    SXMPMeta reread(after.data() + offset, size);
    std::string action;
    REQUIRE(zonstoryparser::GetActionFromXMP(reread, nullptr, &action) && action == "Rain.");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::StartToolkit();
    if (size == 0) {
        return 0;
    }
    const XMP_FileFormat format = kFormats[data[0] % std::size(kFormats)];
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    IsRefused([&] { CheckMedia(bytes, format); });
    if (format == kXMP_MPEG4File) {
        IsRefused([&] { CheckLayout(bytes); });
        CheckPacket(bytes);
    }
    return 0;
}

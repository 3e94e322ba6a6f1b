#include <fcntl.h>

#include <gmock/gmock.h>

#include "clip/Clip.h"
#include "clip/Essence.h"
#include "clip/IsoBoxes.h"
#include "support/ClipSamples.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;

using zonstory::ByteRange;
using zonstory::ByteReader;
using zonstory::FileDescriptor;

std::string Number(std::uint64_t value, int width, bool isBigEnd) {
    std::string bytes;
    for (int index = 0; index < width; ++index) {
        const int shift = 8 * (isBigEnd ? width - 1 - index : index);
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

std::string Box(const std::string& type, const std::string& content) {
    return Number(content.size() + 8, 4, true) + type + content;
}

std::string LongBox(const std::string& type, const std::string& content) {
    return Number(1, 4, true) + type + Number(content.size() + 16, 8, true) + content;
}

std::string Chunk(const std::string& name, const std::string& content) {
    return name + Number(content.size(), 4, false) + content + (content.size() % 2 != 0 ? std::string(1, '\0') : "");
}

std::string BigChunk(const std::string& name, const std::string& content) {
    return name + Number(content.size(), 4, true) + content;
}

std::string Flv(const std::string& type, const std::string& content) {
    return type + Number(content.size(), 3, true) + std::string(7, '\0') + content +
           Number(content.size() + 11, 4, true);
}

const std::string kIndex = Box("ftyp", "qt  ") + Box("moov", "");
const std::string kRf64 = "RF64\xFF\xFF\xFF\xFFWAVE" + Chunk("ds64", Number(99, 8, false) + Number(6, 8, false) +
                                                                         Number(0, 8, false) + Number(0, 4, false));
const std::string kAsfData = "\x36\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9" + std::string(1, '\0') + "\xAA" +
                             std::string(1, '\0') + "\x62\xCE\x6C" + Number(29, 8, false) + "media";
const std::string kFlv = "FLV\1\5\0\0\0\x09\0\0\0\0"s;
const std::string kId3 = "ID3\4" + std::string(5, '\0') + "\5" + "title";

class FileOf {
public:
    explicit FileOf(const std::string& bytes) : mSize(bytes.size()) {
        support::WriteFile(mFolder / "file", bytes);
        mFile = FileDescriptor(::open((mFolder / "file").c_str(), O_RDONLY | O_CLOEXEC));
    }
    ByteReader Reader() const { return {mFile, mSize}; }

private:
    support::TemporaryFolder mFolder;
    std::uint64_t mSize;
    FileDescriptor mFile;
};

struct EssenceCase {
    const char* name;
    XMP_FileFormat format;
    std::string file;
    std::vector<std::string> media; ///< Empty for a file that is refused.
};

// clang-format off
const EssenceCase kFiles[] = {
    {"ISO box", kXMP_MPEG4File, kIndex + Box("mdat", "media") + Box("uuid", "x"), {"media"}},
    {"ISO long box", kXMP_MOVFile, kIndex + LongBox("mdat", "media") + Box("free", ""), {"media"}},
    {"ISO box to the end", kXMP_MOVFile, kIndex + Number(0, 4, true) + "mdatmedia", {"media"}},
    {"ISO several", kXMP_MOVFile, Box("mdat", "one") + kIndex + Box("mdat", "two"), {"one", "two"}},
    {"ISO padding behind", kXMP_MOVFile, kIndex + Box("mdat", "media") + std::string(7, '\0'), {"media"}},
    {"ISO no index", kXMP_MPEG4File, Box("mdat", "media"), {}},
    {"ISO truncated", kXMP_MPEG4File, kIndex + Number(99, 4, true) + "mdatmedia", {}},
    {"ISO long truncated", kXMP_MPEG4File, kIndex + Number(1, 4, true) + "mdat" + Number(99, 8, true), {}},
    {"ISO size too small", kXMP_MPEG4File, kIndex + Number(7, 4, true) + "mdatmedia", {}},
    {"WAV", kXMP_WAVFile, "RIFF\x63\0\0\0WAVE"s + Chunk("fmt ", "f") + Chunk("data", "media") + Chunk("_PMX", "x"), {"media"}},
    {"WAV beyond 4 GB", kXMP_WAVFile, kRf64 + "data\xFF\xFF\xFF\xFFmedias" + Chunk("_PMX", "x"), {"medias"}},
    {"WAV truncated", kXMP_WAVFile, "RIFF\x63\0\0\0WAVE"s + "data\x09\0\0\0media"s, {}},
    {"AVI in parts", kXMP_AVIFile, Chunk("RIFF", "AVI " + Chunk("LIST", "hdrlx") + Chunk("LIST", "movione")) +
                                   Chunk("RIFF", "AVIX" + Chunk("LIST", "movitwo")), {"one", "two"}},
    {"AVI truncated", kXMP_AVIFile, "RIFF\x63\0\0\0AVI "s + Chunk("LIST", "movione"), {}},
    {"AIFF", kXMP_AIFFFile, "FORM\0\0\0\x63" "AIFF"s + BigChunk("COMM", "xx") + BigChunk("SSND", "media!"), {"media!"}},
    {"MP3 between tags", kXMP_MP3File, kId3 + "frames" + "TAG" + std::string(125, ' '), {"frames"}},
    {"MP3 bare", kXMP_MP3File, "frames", {"frames"}},
    {"MP3 truncated", kXMP_MP3File, kId3.substr(0, 12), {}},
    {"ASF", kXMP_WMAVFile, kAsfData, {"media"}},
    {"ASF truncated", kXMP_WMAVFile, kAsfData.substr(0, 27), {}},
    {"FLV", kXMP_FLVFile, kFlv + Flv("\x12", "meta") + Flv("\x09", "picture"), {Flv("\x09", "picture").substr(0, 18)}},
    {"FLV truncated", kXMP_FLVFile, kFlv + Flv("\x09", "picture").substr(0, 15), {}},
};
// clang-format on

TEST(EssenceOf, IsFoundWholeAndAlone) {
    for (const EssenceCase& c : kFiles) {
        SCOPED_TRACE(c.name);
        const FileOf file(c.file);
        if (c.media.empty()) {
            EXPECT_THROW(zonstory::FindEssence(file.Reader(), c.format), zonstory::ClipError);
            continue;
        }
        std::vector<std::string> found;
        for (const ByteRange& range : zonstory::FindEssence(file.Reader(), c.format).ranges) {
            found.push_back(c.file.substr(range.offset, range.size));
        }
        EXPECT_EQ(found, c.media);
    }
}

TEST(EssenceComparison, SeesOneByte) {
    const std::string media(1'000'000, 'm');
    std::string other = media;
    other[700'000] = 'n';
    const FileOf before(kIndex + Box("mdat", media));
    const FileOf moved(kIndex + Box("free", "x") + Box("mdat", media));
    const FileOf changed(kIndex + Box("mdat", other));
    const FileOf shorter(kIndex + Box("mdat", media.substr(1)));
    const auto compare = [&](const FileOf& after) {
        zonstory::RequireSameEssence(before.Reader(), zonstory::FindEssence(before.Reader(), kXMP_MOVFile),
                                     after.Reader(), zonstory::FindEssence(after.Reader(), kXMP_MOVFile));
    };
    EXPECT_NO_THROW(compare(moved));
    EXPECT_THROW(compare(changed), zonstory::ClipError);
    EXPECT_THROW(compare(shorter), zonstory::ClipError);
}

// The media may move, but then the index has to say so: all of it in its place is no use when it is sought in another.
TEST(MediaPositions, FollowTheMedia) {
    const auto file = [](const std::string& gap, std::uint64_t position, const char* type, int width) {
        const std::string table =
            Number(0, 4, true) + Number(2, 4, true) + Number(position, width, true) + Number(position + 2, width, true);
        const std::string index = Box("moov", Box("trak", Box("mdia", Box("minf", Box("stbl", Box(type, table))))));
        return FileOf(Box("ftyp", "qt  ") + index + gap + Box("mdat", "media"));
    };
    for (const auto& [type, width] : {std::pair{"stco", 4}, {"co64", 8}}) {
        SCOPED_TRACE(type);
        const std::uint64_t media = 12 + 5 * 8 + 8 + 8 + 2 * static_cast<std::uint64_t>(width) + 8;
        const FileOf before = file("", media, type, width);
        const auto compare = [&](const FileOf& after) {
            zonstory::RequireSameMediaPositions(before.Reader(), zonstory::ReadIsoLayout(before.Reader()),
                                                after.Reader(), zonstory::ReadIsoLayout(after.Reader()));
        };
        EXPECT_NO_THROW(compare(file("", media, type, width)));
        EXPECT_NO_THROW(compare(file(Box("free", ""), media + 8, type, width)));
        EXPECT_THROW(compare(file(Box("free", ""), media, type, width)), zonstory::ClipError);
        EXPECT_THROW(compare(file("", media + 1, type, width)), zonstory::ClipError);
    }
}

// A file that nests boxes without end is refused or passed over; it used to end the program.
TEST(MediaPositions, AreSoughtWithinBounds) {
    std::string index;
    for (std::size_t boxes = 500'000; boxes > 0; --boxes) {
        index += Number(8 * boxes, 4, true) + "trak";
    }
    const FileOf file(Box("moov", index));
    const zonstory::IsoLayout layout = zonstory::ReadIsoLayout(file.Reader());
    EXPECT_NO_THROW(zonstory::RequireSameMediaPositions(file.Reader(), layout, file.Reader(), layout));
}

} // namespace

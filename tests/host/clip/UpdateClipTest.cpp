#include <cstring>

#include <zonstoryparser/Story.h>
#include <zonstoryparser/XMPFiles.h>

#include "Source.h"
#include "clip/packet/MetadataContent.h"
#include "host/clip/Edits.h"
#include "support/RunProgram.h"

namespace {

namespace fs = std::filesystem;
using support::ClipSample;
using support::kDublinCore;
using support::SetSource;
using zonstory::Outcome;
using zonstory::Target;

// A property of every form, and those for which containers have a place of their own.
constexpr const char* kPropertiesOfAllForms = R"(<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:xmp="http://ns.adobe.com/xap/1.0/"
   xmlns:xmpDM="http://ns.adobe.com/xmp/1.0/DynamicMedia/" xmlns:own="http://example.org/own/">
  <dc:title><rdf:Alt><rdf:li xml:lang="x-default">Tïtel 中</rdf:li></rdf:Alt></dc:title>
  <dc:rights><rdf:Alt><rdf:li xml:lang="x-default">© me</rdf:li></rdf:Alt></dc:rights>
  <dc:creator><rdf:Seq><rdf:li>One</rdf:li></rdf:Seq></dc:creator>
  <dc:subject><rdf:Bag><rdf:li>b</rdf:li><rdf:li>a</rdf:li></rdf:Bag></dc:subject>
  <xmp:CreateDate>2020-01-02T03:04:05Z</xmp:CreateDate>
  <xmp:ModifyDate>2021-01-02T03:04:05+02:00</xmp:ModifyDate>
  <xmp:CreatorTool>Tool &lt;1&gt;</xmp:CreatorTool>
  <xmpDM:duration rdf:parseType="Resource"><xmpDM:value>123</xmpDM:value><xmpDM:scale>1/25</xmpDM:scale></xmpDM:duration>
  <xmpDM:artist>Ärtist</xmpDM:artist><xmpDM:tapeName>A007</xmpDM:tapeName><xmpDM:scene>12A</xmpDM:scene>
  <xmpDM:logComment>one
  two</xmpDM:logComment>
  <own:thing rdf:parseType="Resource"><own:deep><rdf:Seq><rdf:li rdf:parseType="Resource"><own:x>1</own:x></rdf:li>
   </rdf:Seq></own:deep></own:thing>
 </rdf:Description></rdf:RDF>)";

// What exiftool finds beside XMP, without what it says of the file, the sizes and the places in it.
std::string OtherMetadata(const fs::path& clip) {
    return support::RunProgram({"exiftool", "-G1", "-a", "-s", "--XMP:all", "--System:all", "--Composite:all",
                                "--MediaDataOffset", "--ID3Size", "--FileLength", "--RIFFSize64", "--ApplicationData",
                                clip.native()})
        .output;
}

// All pictures and sounds, where they decode without complaint, as not all that ffmpeg makes of segments does; and those
// from the middle on, where only an index leads to.
std::string Decoded(const fs::path& clip) {
    const std::string all = support::DecodedDigest(clip);
    return (all.starts_with("MD5=") ? all : "") + support::DecodedDigest(clip, "0.25");
}

std::string SourceForToolkit(const fs::path& file) {
    SXMPFiles files;
    SXMPMeta xmp;
    std::string source;
    files.OpenFile(file.c_str(), kXMPFiles_OpenForRead | kXMPFiles_OpenUseSmartHandler);
    files.GetXMP(&xmp);
    xmp.GetProperty(kDublinCore, "source", &source, nullptr);
    return source;
}

class UpdateClip : public testing::TestWithParam<ClipSample> {
protected:
    support::TemporaryFolder mFolder;
    const fs::path mClip = support::MakeClip(mFolder.Path(), GetParam());
    const std::string mOld = support::ReadFile(mClip);
    const fs::path mFile = GetParam().isInside ? mClip : fs::path(mClip).replace_extension(".xmp");
};

// Also where the metadata outgrows its place, and media has to move.
TEST_P(UpdateClip, ChangesNothingButTheMetadata) {
    const std::string decoded = Decoded(mClip);
    ASSERT_THAT(decoded, testing::MatchesRegex("(MD5=[0-9a-f]+\n)+"));
    const bool isKnownToExifTool = !mFile.extension().native().starts_with(".aif");
    const std::string others = OtherMetadata(mClip);
    std::string old = GetParam().isInside ? mOld : std::string();
    for (const std::string& value : {std::string("Scene <12> é"), std::string(10000, 'x'), std::string("short")}) {
        const zonstory::UpdateResult result = zonstory::UpdateClip(mClip, {}, SetSource(value));
        EXPECT_EQ(result.outcome, Outcome::Written);
        EXPECT_EQ(result.target, GetParam().isInside ? Target::Inside : Target::Sidecar);
        EXPECT_EQ(result.file, mFile);
        EXPECT_EQ(result.notes.size() == 1 && result.notes[0].starts_with("not written inside, since "),
                  !GetParam().isInside);
        const std::string now = support::ReadFile(mFile);
        EXPECT_TRUE(support::Applied(old, result.record.edits) == now);
        EXPECT_TRUE(support::Applied(now, result.record.inverse) == old);
        old = now;
        EXPECT_EQ(support::ExifToolValue(mFile, "XMP-dc:Source"), isKnownToExifTool ? value : "");
        if (GetParam().isInside) {
            EXPECT_EQ(SourceForToolkit(mFile), value);
        } else {
            EXPECT_EQ(support::Exiv2Value(mFile, "Xmp.dc.source"), value);
            EXPECT_EQ(support::ReadFile(mClip), mOld);
        }
        EXPECT_EQ(Decoded(mClip), decoded);
        EXPECT_EQ(OtherMetadata(mClip), others);
    }
}

TEST_P(UpdateClip, WrittenAndClearedOrTakenBackIsTheFirstAgain) {
    const auto clear = [](SXMPMeta& xmp) { xmp.DeleteProperty(kDublinCore, "source"); };
    const auto first = support::NamesIn(mFolder.Path());
    const zonstory::UpdateResult result = zonstory::UpdateClip(mClip, {}, SetSource());
    const std::string written = support::ReadFile(mFile);
    zonstory::RepeatEdits(mFile, result.record.Reversed(), {});
    EXPECT_TRUE(support::ReadFile(mClip) == mOld);
    EXPECT_EQ(support::NamesIn(mFolder.Path()), first);
    zonstory::RepeatEdits(mFile, result.record, {});
    EXPECT_TRUE(support::ReadFile(mFile) == written);
    EXPECT_THROW(zonstory::RepeatEdits(mFile, result.record, {}), zonstory::ClipError);

    zonstory::UpdateClip(mClip, {}, clear);
    EXPECT_EQ(support::NamesIn(mFolder.Path()), first);
    const bool hadToMove = testing::Value(result.notes, testing::Contains(testing::HasSubstr("move")));
    EXPECT_TRUE(support::ReadFile(mClip) == mOld || hadToMove);
    EXPECT_EQ(support::SourceOf(mClip), "");
}

TEST_P(UpdateClip, RewritesNothingWhereNothingChanges) {
    zonstory::UpdateClip(mClip, {}, [](SXMPMeta& xmp) {
        xmp.SetProperty(kDublinCore, "source", "same");
        xmp.SetProperty(kDublinCore, "format", "other");
    });
    const std::string bytes = support::ReadFile(mFile);
    const auto time = fs::last_write_time(mFile);
    const auto folderTime = fs::last_write_time(mFolder.Path());
    const zonstory::UpdateResult result = zonstory::UpdateClip(mClip, {}, [](SXMPMeta& xmp) {
        xmp.DeleteProperty(kDublinCore, "source"); // and so behind the other one when it is back
        xmp.SetProperty(kDublinCore, "source", "same");
    });
    EXPECT_EQ(result.outcome, Outcome::Unchanged);
    EXPECT_EQ(support::ReadFile(mFile), bytes);
    EXPECT_EQ(fs::last_write_time(mFile), time);
    EXPECT_EQ(fs::last_write_time(mFolder.Path()), folderTime);
}

TEST_P(UpdateClip, KeepsEveryOtherProperty) {
    if (mFile.extension().native().starts_with(".aif")) {
        GTEST_SKIP() << "refused, since the XMP toolkit reads some of them from AIFF's own chunks";
    }
    const SXMPMeta all(kPropertiesOfAllForms, std::strlen(kPropertiesOfAllForms));
    zonstory::UpdateClip(mClip, {}, [&](SXMPMeta& xmp) { xmp = all; });
    zonstory::UpdateClip(mClip, {}, SetSource("v2"));
    SXMPMeta now = zonstory::ReadClip(mClip, {}).xmp;
    now.DeleteProperty(kDublinCore, "source");
    EXPECT_TRUE(zonstory::MetadataContent(now) == zonstory::MetadataContent(all));
}

// What else encoders make of the families that are written inside.
const ClipSample kMoreSamples[] = {
    {"Mp4Segmented", "segments.mp4", true, "-map 0 -c:v mpeg4 -g 5 -movflags +frag_keyframe+empty_moov+global_sidx"},
    {"MovSegmented", "segments.mov", true, "-map 0 -c:v mpeg4 -g 5 -movflags +frag_keyframe+empty_moov+global_sidx"},
    {"MovFragmented", "pieces.mov", true, "-map 0 -map 1 -c:v mpeg4 -g 5 -movflags +frag_keyframe"},
    {"MovWithRoom", "room.mov", true, "-map 0 -c:v mjpeg -moov_size 20000"},
    {"WavCalledMp4", "sound.mp4", true, "-map 1 -f wav"},
    {"Aiff", "clip.aiff", true, "-map 1 -metadata title=Title"},
    {"Aifc", "clip.aifc", true, "-map 1 -c:a pcm_s16le"},
    {"Mp3OfVersion3", "three.mp3", true, "-map 1 -id3v2_version 3 -write_id3v1 1 -metadata title=Title"},
};

INSTANTIATE_TEST_SUITE_P(MoreContainers, UpdateClip, testing::ValuesIn(kMoreSamples),
                         [](const auto& sample) { return sample.param.name; });
INSTANTIATE_TEST_SUITE_P(Containers, UpdateClip, testing::ValuesIn(support::ClipSamples()),
                         [](const auto& sample) { return sample.param.name; });

} // namespace

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include <zonstoryparser/Story.h>

#include "clip/Clip.h"
#include "clip/SameMetadata.h"
#include "support/ClipSamples.h"
#include "support/RunProgram.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using support::ClipSample;
using testing::ElementsAre;
using zonstory::ClipOptions;
using zonstory::Outcome;
using zonstory::Target;

constexpr const char* kDublinCore = "http://purl.org/dc/elements/1.1/";

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

SXMPMeta Parse(const std::string& text) {
    return {text.data(), text.size()};
}

auto SetSource(const std::string& value) {
    return [value](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", value); };
}

std::string Text(const SXMPMeta& xmp) {
    std::string text;
    xmp.SerializeToBuffer(&text, kXMP_OmitPacketWrapper, 0, "", "", 0);
    return text;
}

// What exiftool finds beside XMP, without what it says of the file and the places in it.
std::vector<std::string> OtherMetadata(const fs::path& clip) {
    std::istringstream lines(support::RunProgram({"exiftool", "-G1", "-a", "-s", clip.native()}).output);
    std::vector<std::string> kept;
    for (std::string line; std::getline(lines, line);) {
        const bool isOwn = line.starts_with("[XMP") || line.starts_with("[System]") || line.starts_with("[Composite]");
        const bool isPlace = line.find("MediaDataOffset") != std::string::npos ||
                             line.find("ID3Size") != std::string::npos || line.find("FileLength") != std::string::npos;
        if (!isOwn && !isPlace) {
            kept.push_back(line);
        }
    }
    return kept;
}

class UpdateClip : public testing::TestWithParam<ClipSample> {
protected:
    support::TemporaryFolder mFolder;
    const fs::path mClip = support::MakeClip(mFolder.Path(), GetParam());
    const std::string mOld = support::ReadFile(mClip);
    const fs::path mFile = GetParam().isInside ? mClip : fs::path(mClip).replace_extension(".xmp");
};

TEST_P(UpdateClip, WritesWhatOtherProgramsReadAndStillPlays) {
    const std::string digest = support::DecodedDigest(mClip);
    const zonstory::UpdateResult result = zonstory::UpdateClip(mClip, {}, SetSource("Scene <12> é"));
    EXPECT_EQ(result.outcome, Outcome::Written);
    EXPECT_EQ(result.target, GetParam().isInside ? Target::Inside : Target::Sidecar);
    EXPECT_EQ(result.file, mFile);
    EXPECT_THAT(result.notes, ElementsAre());
    EXPECT_EQ(support::ExifToolValue(mFile, "XMP-dc:Source"), "Scene <12> é");
    if (!GetParam().isInside) {
        EXPECT_EQ(support::Exiv2Value(mFile, "Xmp.dc.source"), "Scene <12> é");
        EXPECT_EQ(support::ReadFile(mClip), mOld);
    }
    EXPECT_THAT(digest, testing::StartsWith("MD5="));
    EXPECT_EQ(support::DecodedDigest(mClip), digest);
    EXPECT_EQ(support::NamesIn(mFolder.Path()).size(), GetParam().isInside ? 1U : 2U);
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

TEST_P(UpdateClip, KeepsEverythingElse) {
    const std::vector<std::string> before = OtherMetadata(mClip);
    zonstory::UpdateClip(mClip, {}, SetSource("v1"));
    EXPECT_THAT(OtherMetadata(mClip), testing::IsSupersetOf(before));

    const SXMPMeta all = Parse(kPropertiesOfAllForms);
    zonstory::UpdateClip(mClip, {}, [&](SXMPMeta& xmp) { xmp = all; });
    zonstory::UpdateClip(mClip, {}, SetSource("v2"));
    SXMPMeta now = zonstory::ReadClip(mClip, {}).xmp;
    now.DeleteProperty(kDublinCore, "source");
    now.DeleteProperty("http://ns.adobe.com/xap/1.0/", "NativeDigests"); // the toolkit's own marks
    now.DeleteProperty("http://ns.adobe.com/asf/1.0/", "NativeDigest");
    now.DeleteProperty("http://ns.adobe.com/xmp/1.0/DynamicMedia/", "partOfCompilation");
    EXPECT_TRUE(zonstory::MetadataContent(now) == zonstory::MetadataContent(all)) << Text(now);
}

TEST_P(UpdateClip, DryRunStopsBeforeTheFileChanges) {
    const auto time = fs::last_write_time(mClip);
    ClipOptions options;
    options.dryRun = true;
    const zonstory::UpdateResult result = zonstory::UpdateClip(mClip, options, SetSource("v1"));
    EXPECT_EQ(result.outcome, Outcome::WouldWrite);
    EXPECT_EQ(support::ReadFile(mClip), mOld);
    EXPECT_EQ(fs::last_write_time(mClip), time);
    EXPECT_THAT(support::NamesIn(mFolder.Path()), ElementsAre(GetParam().file));
}

TEST_P(UpdateClip, TakesAwayWhatItWrote) {
    zonstory::UpdateClip(mClip, {}, SetSource("v1"));
    zonstory::UpdateClip(mClip, {}, [](SXMPMeta& xmp) { xmp.DeleteProperty(kDublinCore, "source"); });
    EXPECT_FALSE(zonstory::ReadClip(mClip, {}).xmp.DoesPropertyExist(kDublinCore, "source"));
    EXPECT_EQ(support::ExifToolValue(mFile, "XMP-dc:Source"), "");
}

INSTANTIATE_TEST_SUITE_P(Containers, UpdateClip, testing::ValuesIn(support::ClipSamples()),
                         [](const auto& sample) { return sample.param.name; });

// Where the index is, seen from the bytes: an index that grows must not leave the front, nor come there uncalled.
TEST(UpdateClipLayout, IndexStaysWhereItIs) {
    for (const char* name : {"Mp4IndexAtEnd", "Mp4IndexInFront", "MovIndexAtEnd", "MovIndexInFront"}) {
        SCOPED_TRACE(name);
        const support::TemporaryFolder folder;
        const fs::path clip = support::MakeClip(folder.Path(), support::SampleNamed(name));
        const auto isInFront = [&] {
            const std::string bytes = support::ReadFile(clip);
            return bytes.find("moov") < bytes.find("mdat");
        };
        const bool before = isInFront();
        zonstory::UpdateClip(clip, {}, SetSource("v1"));
        EXPECT_EQ(isInFront(), before);
        zonstory::UpdateClip(clip, {}, SetSource(std::string(10000, 'x')));
        EXPECT_EQ(isInFront(), before);
        EXPECT_THAT(support::DecodedDigest(clip), testing::StartsWith("MD5="));
    }
}

} // namespace

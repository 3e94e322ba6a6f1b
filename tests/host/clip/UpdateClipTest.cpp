#include <cstring>
#include <sstream>

#include <zonstoryparser/Story.h>

#include "Source.h"
#include "clip/packet/MetadataContent.h"
#include "support/Edits.h"
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
        const bool isPlace =
            line.find("MediaDataOffset") != std::string::npos || line.find("ID3Size") != std::string::npos ||
            line.find("FileLength") != std::string::npos || line.find("RIFFSize64") != std::string::npos;
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

// Also where the metadata outgrows its place, and media has to move.
TEST_P(UpdateClip, ChangesNothingButTheMetadata) {
    const std::string digest = support::DecodedDigest(mClip);
    ASSERT_THAT(digest, testing::StartsWith("MD5="));
    const std::vector<std::string> others = OtherMetadata(mClip);
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
        EXPECT_EQ(support::ExifToolValue(mFile, "XMP-dc:Source"), value);
        if (!GetParam().isInside) {
            EXPECT_EQ(support::Exiv2Value(mFile, "Xmp.dc.source"), value);
            EXPECT_EQ(support::ReadFile(mClip), mOld);
        }
        EXPECT_EQ(support::DecodedDigest(mClip), digest);
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
    const SXMPMeta all(kPropertiesOfAllForms, std::strlen(kPropertiesOfAllForms));
    zonstory::UpdateClip(mClip, {}, [&](SXMPMeta& xmp) { xmp = all; });
    zonstory::UpdateClip(mClip, {}, SetSource("v2"));
    SXMPMeta now = zonstory::ReadClip(mClip, {}).xmp;
    now.DeleteProperty(kDublinCore, "source");
    EXPECT_TRUE(zonstory::MetadataContent(now) == zonstory::MetadataContent(all)) << Text(now);
}

INSTANTIATE_TEST_SUITE_P(Containers, UpdateClip, testing::ValuesIn(support::ClipSamples()),
                         [](const auto& sample) { return sample.param.name; });

} // namespace

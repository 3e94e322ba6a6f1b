#include "clip/Sidecar.h"
#include "Source.h"
#include "clip/PlaceRules.h"
#include "clip/SidecarConflicts.h"
#include "host/clip/MadeChunks.h"

namespace {

namespace fs = std::filesystem;
using support::SetSource;
using testing::ElementsAre;
using zonstory::ClipOptions;

constexpr const char* kSidecarOfAnotherMaker = R"(<?xml version="1.0"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about="" xmlns:cam="http://example.org/camera/" cam:Lens="35mm"><cam:Look><rdf:Seq><rdf:li>LogC</rdf:li>
</rdf:Seq></cam:Look></rdf:Description></rdf:RDF></x:xmpmeta>)";

const ClipOptions kShort = {};
const ClipOptions kFull = {.sidecarName = zonstory::SidecarName::Full};
const ClipOptions kForced = {.placement = zonstory::Placement::Sidecar};

class Sidecar : public testing::Test {
protected:
    // Only a sidecar is made, so any bytes do for the clip.
    fs::path Clip(const std::string& name) const {
        support::WriteFile(mFolder / name, "media of " + name);
        return mFolder / name;
    }

    zonstory::UpdateResult Update(const fs::path& clip, const ClipOptions& options, const std::string& value = "v") {
        return zonstory::UpdateClip(clip, options, SetSource(value));
    }

    support::TemporaryFolder mFolder;
};

TEST_F(Sidecar, WhicheverNameExistsIsUpdatedAndKeepsWhatAnotherMakerWrote) {
    const fs::path clip = Clip("A.mkv");
    EXPECT_EQ(Update(clip, kFull).file.filename(), "A.mkv.xmp");
    EXPECT_EQ(Update(clip, kShort, "w").file.filename(), "A.mkv.xmp");
    support::WriteFile(mFolder / "A.xmp", kSidecarOfAnotherMaker);
    const zonstory::UpdateResult both = Update(clip, kShort, "x");
    EXPECT_EQ(both.file.filename(), "A.xmp");
    EXPECT_THAT(both.notes, testing::Contains(testing::HasSubstr("A.mkv.xmp was left alone")));
    EXPECT_EQ(support::ExifToolValue(both.file, "XMP-cam:Lens"), "35mm");
    EXPECT_EQ(support::ExifToolValue(both.file, "XMP-cam:Look"), "LogC");
    EXPECT_EQ(support::Exiv2Value(both.file, "Xmp.dc.source"), "x");
    EXPECT_EQ(Update(clip, kFull, "y").file.filename(), "A.mkv.xmp");
}

TEST_F(Sidecar, InUpperCaseIsTheClipsToo) {
    const fs::path clip = Clip("A.mkv");
    support::WriteFile(mFolder / "A.XMP", kSidecarOfAnotherMaker);
    EXPECT_EQ(Update(clip, kFull).file.filename(), "A.XMP");
    fs::create_hard_link(mFolder / "A.XMP", mFolder / "A.xmp"); // one file, as where case does not count
    EXPECT_THAT(Update(clip, kShort, "w").notes, testing::Not(testing::Contains(testing::HasSubstr("left alone"))));
}

TEST_F(Sidecar, ForcedLeavesTheClipAlone) {
    const fs::path clip = support::MakeClip(mFolder.Path(), support::SampleNamed("Wav"));
    const std::string bytes = support::ReadFile(clip);
    EXPECT_EQ(Update(clip, kForced).target, zonstory::Target::Sidecar);
    EXPECT_TRUE(support::ReadFile(clip) == bytes);
    EXPECT_EQ(support::SourceOf(clip), "");
    EXPECT_TRUE(zonstory::ReadClip(clip, kForced).hasXMP);
}

// Says of each place what it takes for the other.
class SourceSubject : public zonstory::Subject {
public:
    bool IsIn(const SXMPMeta& xmp) const override { return xmp.DoesPropertyExist(support::kDublinCore, "source"); }
    void Copy(const SXMPMeta& from, SXMPMeta& to) const override {
        std::string value;
        from.GetProperty(support::kDublinCore, "source", &value, nullptr);
        to.SetProperty(support::kDublinCore, "source", value);
    }
    void Withdraw(SXMPMeta& xmp, const SXMPMeta&) const override { xmp.DeleteProperty(support::kDublinCore, "source"); }
    std::string Contradiction(const SXMPMeta&, const SXMPMeta&) const override { return "two sources"; }
};

TEST_F(Sidecar, OfAClipWhoseOwnPacketCannotBeChangedIsReadAndCleared) {
    const SourceSubject subject;
    zonstory::PlaceRules rules(subject);
    ClipOptions options;
    options.rules = &rules;
    const fs::path clip = mFolder / "A.wav";
    const std::string packet = R"(<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"/>)";
    support::WriteFile(
        clip, support::Chunk("RIFF", "WAVE" + support::Chunk("data", "pcm!") + support::Chunk("_PMX", packet)));
    EXPECT_EQ(Update(clip, options).target, zonstory::Target::Sidecar);
    EXPECT_EQ(zonstory::ReadClip(clip, options).target, zonstory::Target::Sidecar);
    const auto clear = [](SXMPMeta& xmp) { xmp.DeleteProperty(support::kDublinCore, "source"); };
    EXPECT_EQ(zonstory::UpdateClip(clip, options, clear).target, zonstory::Target::Sidecar);
    EXPECT_EQ(support::NamesIn(mFolder.Path()).size(), 1u);
}

// A run that ends between the two changes leaves what was written last where it counts, and the next one goes on.
TEST_F(Sidecar, TwoPlacesAreChangedInTheOrderThatLosesNothing) {
    const SourceSubject subject;
    zonstory::PlaceRules rules(subject);
    ClipOptions options;
    options.rules = &rules;
    const fs::path clip = support::MakeClip(mFolder.Path(), support::SampleNamed("Wav"));
    const std::string bytes = support::ReadFile(clip);
    Update(clip, {}, "inside");
    Update(clip, kForced, "beside");
    EXPECT_EQ(zonstory::ReadClip(clip, options).contradiction, "two sources");
    EXPECT_EQ(Update(clip, options, "new").unsettled, zonstory::Target::Inside);
    const zonstory::UpdateResult again = Update(clip, options, "new");
    EXPECT_EQ(again.outcome, zonstory::Outcome::Unchanged);
    ASSERT_EQ(again.unsettled, zonstory::Target::Inside);
    zonstory::SettleClip(clip, *again.unsettled, options);
    EXPECT_TRUE(support::ReadFile(clip) == bytes);
    EXPECT_EQ(Update(clip, options, "new").unsettled, std::nullopt);

    Update(clip, {}, "inside");
    const auto clear = [](SXMPMeta& xmp) { xmp.DeleteProperty(support::kDublinCore, "source"); };
    const zonstory::UpdateResult cleared = zonstory::UpdateClip(clip, options, clear);
    EXPECT_TRUE(support::ReadFile(clip) == bytes) << "what counts less goes first";
    ASSERT_EQ(cleared.unsettled, zonstory::Target::Sidecar);
    zonstory::SettleClip(clip, *cleared.unsettled, options);
    EXPECT_EQ(support::NamesIn(mFolder.Path()).size(), 1u);
}

TEST_F(Sidecar, LinkIsFollowedAndKept) {
    const fs::path clip = Clip("A.mkv");
    support::WriteFile(mFolder / "xmp" / "real.xmp", kSidecarOfAnotherMaker);
    fs::create_symlink("xmp/real.xmp", mFolder / "A.xmp");
    Update(clip, {});
    EXPECT_TRUE(fs::is_symlink(mFolder / "A.xmp"));
    EXPECT_EQ(support::Exiv2Value(mFolder / "xmp" / "real.xmp", "Xmp.dc.source"), "v");
}

// Left to itself, the toolkit would take a camera card's own files for the clip's.
TEST_F(Sidecar, InACameraCardLeavesTheCardsOwnFiles) {
    support::WriteFile(mFolder / "CONTENTS/CLIP/CLIP.XML", "<card/>");
    EXPECT_EQ(Update(Clip("CONTENTS/VIDEO/CLIP.MXF"), {}).file.filename(), "CLIP.xmp");
    EXPECT_THAT(support::NamesIn(mFolder / "CONTENTS/CLIP"), ElementsAre("CLIP.XML"));
}

struct ConflictCase {
    const char* name;
    std::vector<std::string> files; ///< In the folder; ".wav" is a real clip that is written inside.
    std::vector<std::string> asked;
    ClipOptions options;
    std::vector<std::string> conflicts;
};

// clang-format off
const ConflictCase kConflicts[] = {
    {"two",              {"A.mxf", "A.mkv", "B.mkv"}, {"A.mxf", "B.mkv", "A.mkv"}, kShort, {"A.mxf A.mkv A.xmp"}},
    {"three",            {"A.mxf", "A.mkv", "A.ts"}, {"A.ts", "A.mxf", "A.mkv"}, kShort, {"A.ts A.mxf A.xmp", "A.ts A.mkv A.xmp"}},
    {"full names",       {"A.mxf", "A.mkv"}, {"A.mxf", "A.mkv"}, kFull, {}},
    {"but a short one",  {"A.mxf", "A.mkv", "A.xmp"}, {"A.mxf", "A.mkv"}, kFull, {"A.mxf A.mkv A.xmp"}},
    {"one inside",       {"A.mxf", "A.wav"}, {"A.mxf", "A.wav"}, kShort, {}},
    {"both forced",      {"A.mxf", "A.wav"}, {"A.mxf", "A.wav"}, kForced, {"A.mxf A.wav A.xmp"}},
    {"earlier run",      {"A.mxf", "A.mkv"}, {"A.mkv"}, kShort, {"A.mkv A.mxf A.xmp"}},
    {"neighbour inside", {"A.mxf", "A.wav"}, {"A.mxf"}, kForced, {}},
    {"same clip twice",  {"A.mxf"}, {"A.mxf", "A.mxf"}, kShort, {}},
    {"case ignored",     {"A.mxf", "=a.MXF", "a.mkv"}, {"A.mxf"}, kShort, {"A.mxf a.mkv A.xmp"}},
    {"case counts",      {"A.mxf", "a.mkv"}, {"A.mxf"}, kShort, {}},
    {"frames",           {"A.0001.dpx", "A.0002.dpx", "B.mkv"}, {"A.0002.dpx"}, kShort, {}},
    {"frames and a clip", {"A.0001.dpx", "A.mkv"}, {"A.0001.dpx"}, kShort, {"A.0001.dpx A.mkv A.xmp"}},
    {"missing",          {"A.mxf"}, {"A.mxf", "A.mkv"}, kShort, {}},
};
// clang-format on

TEST(SidecarConflicts, NameBothClips) {
    for (const ConflictCase& c : kConflicts) {
        const support::TemporaryFolder folder;
        for (const std::string& file : c.files) {
            if (file.starts_with('=')) { // as a folder looks in which upper and lower case are one
                fs::create_hard_link(folder / c.files.front(), folder / file.substr(1));
            } else if (file.ends_with(".wav")) {
                fs::rename(support::MakeClip(folder.Path(), support::SampleNamed("Wav")), folder / file);
            } else {
                support::WriteFile(folder / file, file.ends_with(".xmp") ? kSidecarOfAnotherMaker : "media of " + file);
            }
        }
        std::vector<fs::path> clips;
        for (const std::string& name : c.asked) {
            clips.push_back(folder / name);
        }
        std::vector<std::string> found;
        for (const auto& conflict : zonstory::SidecarConflicts(clips, c.options)) {
            found.push_back(conflict.first.filename().native() + ' ' + conflict.second.filename().native() + ' ' +
                            conflict.sidecar.filename().native());
        }
        EXPECT_EQ(found, c.conflicts) << c.name;
    }
}

} // namespace

#include <gmock/gmock.h>

#include "clip/Clip.h"
#include "clip/Sidecar.h"
#include "clip/SidecarConflicts.h"
#include "support/ClipSamples.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using zonstory::ClipOptions;
using zonstory::SidecarName;

constexpr const char* kDublinCore = "http://purl.org/dc/elements/1.1/";
constexpr const char* kSidecarOfAnotherMaker = R"(<?xml version="1.0"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about="" xmlns:cam="http://example.org/camera/" cam:Lens="35mm"><cam:Look><rdf:Seq><rdf:li>LogC</rdf:li>
</rdf:Seq></cam:Look></rdf:Description></rdf:RDF></x:xmpmeta>)";

ClipOptions Named(SidecarName name, bool force = false) {
    ClipOptions options;
    options.sidecarName = name;
    options.forceSidecar = force;
    return options;
}

class Sidecar : public testing::Test {
protected:
    // Only a sidecar is made, so any bytes do for the clip.
    fs::path Clip(const std::string& name) const {
        support::WriteFile(mFolder / name, "media of " + name);
        return mFolder / name;
    }

    zonstory::UpdateResult Update(const fs::path& clip, const ClipOptions& options, const std::string& value = "v") {
        return zonstory::UpdateClip(clip, options,
                                    [&](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", value); });
    }

    support::TemporaryFolder mFolder;
};

TEST_F(Sidecar, WhicheverNameExistsIsUpdated) {
    const fs::path clip = Clip("A.mkv");
    EXPECT_EQ(Update(clip, Named(SidecarName::Full)).file.filename(), "A.mkv.xmp");
    EXPECT_EQ(Update(clip, Named(SidecarName::Short), "w").file.filename(), "A.mkv.xmp");
    support::WriteFile(mFolder / "A.xmp", kSidecarOfAnotherMaker);
    const zonstory::UpdateResult both = Update(clip, Named(SidecarName::Short), "x");
    EXPECT_EQ(both.file.filename(), "A.xmp");
    EXPECT_THAT(both.notes, ElementsAre(testing::HasSubstr("A.mkv.xmp was left alone")));
    EXPECT_EQ(Update(clip, Named(SidecarName::Full), "y").file.filename(), "A.mkv.xmp");
}

TEST_F(Sidecar, KeepsWhatAnotherMakerWrote) {
    const fs::path clip = Clip("A.mkv");
    support::WriteFile(mFolder / "A.xmp", kSidecarOfAnotherMaker);
    Update(clip, {});
    EXPECT_EQ(support::ExifToolValue(mFolder / "A.xmp", "XMP-cam:Lens"), "35mm");
    EXPECT_EQ(support::ExifToolValue(mFolder / "A.xmp", "XMP-cam:Look"), "LogC");
    EXPECT_EQ(support::Exiv2Value(mFolder / "A.xmp", "Xmp.dc.source"), "v");
}

TEST_F(Sidecar, ForcedLeavesTheClipAlone) {
    const fs::path clip = support::MakeClip(mFolder.Path(), support::SampleNamed("Wav"));
    const std::string bytes = support::ReadFile(clip);
    EXPECT_EQ(Update(clip, Named(SidecarName::Short, true)).target, zonstory::Target::Sidecar);
    EXPECT_TRUE(support::ReadFile(clip) == bytes);
    EXPECT_FALSE(zonstory::ReadClip(clip, {}).xmp.DoesPropertyExist(kDublinCore, "source"));
    EXPECT_TRUE(zonstory::ReadClip(clip, Named(SidecarName::Short, true)).hasXMP);
}

TEST_F(Sidecar, LinkIsFollowedAndKept) {
    const fs::path clip = Clip("A.mkv");
    fs::create_directory(mFolder / "xmp");
    support::WriteFile(mFolder / "xmp" / "real.xmp", kSidecarOfAnotherMaker);
    fs::create_symlink("xmp/real.xmp", mFolder / "A.xmp");
    Update(clip, {});
    EXPECT_TRUE(fs::is_symlink(mFolder / "A.xmp"));
    EXPECT_EQ(support::Exiv2Value(mFolder / "xmp" / "real.xmp", "Xmp.dc.source"), "v");
}

struct ConflictCase {
    const char* name;
    std::vector<std::string> files; ///< In the folder; ".wav" is a real clip that is written inside.
    std::vector<std::string> asked;
    ClipOptions options;
    std::vector<std::string> conflicts;
};
void PrintTo(const ConflictCase& c, std::ostream* stream) {
    *stream << c.name;
}

class SidecarConflicts : public testing::TestWithParam<ConflictCase> {};

TEST_P(SidecarConflicts, NameBothClips) {
    const support::TemporaryFolder folder;
    for (const std::string& file : GetParam().files) {
        if (file.ends_with(".wav")) {
            fs::rename(support::MakeClip(folder.Path(), support::SampleNamed("Wav")), folder / file);
        } else {
            support::WriteFile(folder / file, file.ends_with(".xmp") ? kSidecarOfAnotherMaker : "media of " + file);
        }
    }
    std::vector<fs::path> clips;
    for (const std::string& name : GetParam().asked) {
        clips.push_back(folder / name);
    }
    std::vector<std::string> found;
    for (const auto& conflict : zonstory::SidecarConflicts(clips, GetParam().options)) {
        found.push_back(conflict.first.filename().native() + ' ' + conflict.second.filename().native() + ' ' +
                        conflict.sidecar.filename().native());
    }
    EXPECT_EQ(found, GetParam().conflicts);
}

const ClipOptions kShort = Named(SidecarName::Short);
const ClipOptions kFull = Named(SidecarName::Full);
const ClipOptions kForced = Named(SidecarName::Short, true);

INSTANTIATE_TEST_SUITE_P(
    Folders, SidecarConflicts,
    testing::Values(
        ConflictCase{"Two", {"A.mxf", "A.mkv", "B.mkv"}, {"A.mxf", "B.mkv", "A.mkv"}, kShort, {"A.mxf A.mkv A.xmp"}},
        ConflictCase{"FullNames", {"A.mxf", "A.mkv"}, {"A.mxf", "A.mkv"}, kFull, {}},
        ConflictCase{"FullNamesButAShortOneExists",
                     {"A.mxf", "A.mkv", "A.xmp"},
                     {"A.mxf", "A.mkv"},
                     kFull,
                     {"A.mxf A.mkv A.xmp"}},
        ConflictCase{"OneIsWrittenInside", {"A.mxf", "A.wav"}, {"A.mxf", "A.wav"}, kShort, {}},
        ConflictCase{"BothForced", {"A.mxf", "A.wav"}, {"A.mxf", "A.wav"}, kForced, {"A.mxf A.wav A.xmp"}},
        ConflictCase{"NeighbourOfAnEarlierRun", {"A.mxf", "A.mkv"}, {"A.mkv"}, kShort, {"A.mkv A.mxf A.xmp"}},
        ConflictCase{"NeighbourWrittenInside", {"A.mxf", "A.wav"}, {"A.mxf"}, kForced, {}},
        ConflictCase{"SameClipTwice", {"A.mxf"}, {"A.mxf", "A.mxf"}, kShort, {}},
        ConflictCase{"Three",
                     {"A.mxf", "A.mkv", "A.ts"},
                     {"A.ts", "A.mxf", "A.mkv"},
                     kShort,
                     {"A.ts A.mxf A.xmp", "A.ts A.mkv A.xmp"}},
        ConflictCase{"Missing", {"A.mxf"}, {"A.mxf", "A.mkv"}, kShort, {}}),
    [](const auto& sample) { return std::string(sample.param.name); });

} // namespace

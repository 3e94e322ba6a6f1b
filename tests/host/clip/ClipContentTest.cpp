#include "Source.h"

namespace {

namespace fs = std::filesystem;
using support::SetSource;

// What a name says of the format does not count where the content says something else.
TEST(ClipContent, DecidesOverTheName) {
    const support::TemporaryFolder folder;
    const fs::path wav = folder / "really-sound.mp4";
    fs::rename(support::MakeClip(folder.Path(), support::SampleNamed("Wav")), wav);
    EXPECT_EQ(zonstory::UpdateClip(wav, {}, SetSource()).target, zonstory::Target::Inside);
    EXPECT_EQ(support::ReadFile(wav).substr(0, 4), "RIFF");
    EXPECT_EQ(support::ExifToolValue(wav, "XMP-dc:Source"), "v");
}

// Left to itself, the toolkit would write into the card's own files.
TEST(ClipContent, CameraCardsKeepTheirOwnFiles) {
    const support::TemporaryFolder folder;
    const fs::path video = folder / "CONTENTS" / "VIDEO";
    fs::create_directories(video);
    fs::create_directories(folder / "CONTENTS" / "CLIP");
    support::WriteFile(folder / "CONTENTS" / "CLIP" / "CLIP.XML", "<card/>");
    fs::rename(support::MakeClip(video, support::SampleNamed("Mxf")), video / "CLIP.MXF");
    EXPECT_EQ(zonstory::UpdateClip(video / "CLIP.MXF", {}, SetSource()).file, fs::canonical(video) / "CLIP.xmp");
    EXPECT_THAT(support::NamesIn(folder / "CONTENTS" / "CLIP"), testing::ElementsAre("CLIP.XML"));
}

} // namespace

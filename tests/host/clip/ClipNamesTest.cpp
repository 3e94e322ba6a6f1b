#include <gmock/gmock.h>

#include "clip/Clip.h"
#include "support/ClipSamples.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kDublinCore = "http://purl.org/dc/elements/1.1/";

struct NameCase {
    const char* name;
    std::string folder, file;
};
void PrintTo(const NameCase& c, std::ostream* stream) {
    *stream << c.name;
}

class ClipNames : public testing::TestWithParam<NameCase> {};

TEST_P(ClipNames, AreAllReachedAbsoluteAndRelative) {
    const support::TemporaryFolder temporary;
    const fs::path folder = temporary.Path() / GetParam().folder;
    const fs::path made = support::MakeClip(temporary.Path(), support::SampleNamed("MovIndexInFront"));
    const fs::path start = fs::current_path();
    fs::create_directories(folder);
    fs::rename(made, folder / GetParam().file);
    const auto expectWritten = [&](const fs::path& path, const std::string& value) {
        SCOPED_TRACE(value);
        zonstory::UpdateClip(path, {}, [&](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", value); });
        std::string found;
        zonstory::ReadClip(folder / GetParam().file, {}).xmp.GetProperty(kDublinCore, "source", &found, nullptr);
        EXPECT_EQ(found, value);
        EXPECT_THAT(support::NamesIn(folder), testing::ElementsAre(GetParam().file));
    };
    expectWritten(folder / GetParam().file, "absolute");
    fs::current_path(temporary.Path());
    expectWritten(fs::path(GetParam().folder) / GetParam().file, "relative");
    fs::current_path(folder);
    expectWritten(GetParam().file, "bare");
    expectWritten(fs::path(".") / GetParam().file, "dot");
    fs::current_path(start);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ClipNames,
    testing::Values(NameCase{"Spaces", "a folder", "a clip.mov"}, NameCase{"Quotes", "'f'", "'it''s' \"x\" `y` $z.mov"},
                    NameCase{"LineFeed", "f\nf", "a\nb.mov"}, NameCase{"NotUtf8", "f\xFF\xFE", "\xE9t\xE9.mov"},
                    NameCase{"LeadingDash", "-f", "-rf.mov"}, NameCase{"OneLetter", "w", "x"},
                    NameCase{"OneLetterAndExtension", "w", "x.mov"}, NameCase{"NoExtension", "folder", "clip"},
                    NameCase{"LongExtension", "folder", "clip." + std::string(200, 'e')},
                    NameCase{"Longest", std::string(255, 'f'), std::string(251, 'c') + ".mov"}),
    [](const auto& sample) { return std::string(sample.param.name); });

// What a name says of the format does not count where the content says something else.
TEST(ClipContent, DecidesOverTheName) {
    const support::TemporaryFolder folder;
    const fs::path wav = folder / "really-sound.mp4";
    fs::rename(support::MakeClip(folder.Path(), support::SampleNamed("Wav")), wav);
    const auto change = [](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", "v"); };
    EXPECT_EQ(zonstory::UpdateClip(wav, {}, change).target, zonstory::Target::Inside);
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
    const auto change = [](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", "v"); };
    EXPECT_EQ(zonstory::UpdateClip(video / "CLIP.MXF", {}, change).file, fs::canonical(video) / "CLIP.xmp");
    EXPECT_THAT(support::NamesIn(folder / "CONTENTS" / "CLIP"), testing::ElementsAre("CLIP.XML"));
}

} // namespace

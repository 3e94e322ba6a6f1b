#include "Source.h"

namespace {

namespace fs = std::filesystem;
using support::SetSource;

// A folder and a clip in it; the longest name leaves no room for another one made of it.
const std::pair<std::string, std::string> kNames[] = {
    {"'f'", "'it''s' \"x\" `y` $z.mov"},
    {"f\nf", "a\nb.mov"},
    {"f\xFF\xFE", "\xE9t\xE9.mov"},
    {"-f", "-rf.mov"},
    {"w", "x"},
    {"w", "x.mov"},
    {"folder", "clip." + std::string(200, 'e')},
    {std::string(255, 'f'), std::string(251, 'c') + ".mov"},
};

TEST(ClipNames, AreAllReachedAbsoluteAndRelative) {
    const fs::path start = fs::current_path();
    for (const auto& [folderName, file] : kNames) {
        const support::TemporaryFolder temporary;
        const fs::path folder = temporary.Path() / folderName;
        fs::create_directories(folder);
        fs::rename(support::MakeClip(temporary.Path(), support::SampleNamed("MovIndexInFront")), folder / file);
        const auto expectWritten = [&, &file = file](const fs::path& path, const std::string& value) {
            zonstory::UpdateClip(path, {}, SetSource(value));
            EXPECT_EQ(support::SourceOf(folder / file), value) << file;
            EXPECT_THAT(support::NamesIn(folder), testing::ElementsAre(file));
        };
        expectWritten(folder / file, "absolute");
        fs::current_path(temporary.Path());
        expectWritten(fs::path(folderName) / file, "relative");
        fs::current_path(folder);
        expectWritten(file, "bare");
        expectWritten(fs::path(".") / file, "dot");
        fs::current_path(start);
    }
}

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

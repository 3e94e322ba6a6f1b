#include <sys/stat.h>

#include <gmock/gmock.h>

#include "clip/FindClips.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class ClipListing : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"B.MOV", "a.mxf", "a.xmp", "notes.txt", ".hidden.mov", "noextension", "C.Mp4"}) {
            support::WriteFile(mFolder / name, "x");
        }
        support::WriteFile(mFolder / ".zonstory-work" / "copy.mov", "x");
        support::WriteFile(mFolder / "day" / "d.wav", "x");
        support::WriteFile(mFolder / "day" / "cam.mov" / "e.avi", "x"); // in a folder with a clip's name
        fs::create_symlink("..", mFolder / "day" / "up");
        fs::create_symlink("../B.MOV", mFolder / "day" / "again.mov");
        fs::create_symlink("nowhere", mFolder / "dangling.mov");
        ::mkfifo((mFolder / "pipe.mov").c_str(), 0600);
    }

    std::vector<std::string> Found(const std::vector<fs::path>& paths, bool recursive) {
        std::vector<std::string> names;
        zonstory::FoundClips list = zonstory::FindClips(paths, recursive);
        for (const fs::path& clip : list.clips) {
            names.push_back(clip.lexically_relative(mFolder.Path()));
        }
        mErrors = std::move(list.errors);
        return names;
    }

    support::TemporaryFolder mFolder;
    std::vector<zonstory::UnsearchedPath> mErrors;
};

TEST_F(ClipListing, FolderStandsForItsMediaFilesOnceAndOutOfLoops) {
    EXPECT_THAT(Found({mFolder.Path()}, false), ElementsAre("B.MOV", "C.Mp4", "a.mxf"));
    EXPECT_THAT(mErrors, testing::IsEmpty());
    EXPECT_THAT(Found({mFolder.Path()}, true),
                ElementsAre("B.MOV", "C.Mp4", "a.mxf", "day/d.wav", "day/cam.mov/e.avi"));
    EXPECT_THAT(mErrors, testing::IsEmpty());
}

TEST_F(ClipListing, FileStandsForItselfOnceUnderItsFirstName) {
    fs::create_hard_link(mFolder / "a.mxf", mFolder / "z.mxf");
    EXPECT_THAT(Found({mFolder / "notes.txt", mFolder / "day" / "again.mov", mFolder / "B.MOV", mFolder / "z.mxf",
                       mFolder.Path(), mFolder / "notes.txt"},
                      false),
                ElementsAre("notes.txt", "day/again.mov", "z.mxf", "C.Mp4"));
}

TEST_F(ClipListing, SidecarNamedBesideItsClipIsPartOfIt) {
    const fs::path folder = mFolder.Path();
    for (const char* name : {"B.MOV.XMP", "C.xmp", "alone.xmp"}) {
        support::WriteFile(folder / name, "x");
    }
    EXPECT_THAT(Found({folder / "B.MOV.XMP", folder / "C.xmp", folder / "a.xmp", folder / "alone.xmp",
                       folder / "." / "B.MOV", folder},
                      false),
                ElementsAre("alone.xmp", "./B.MOV", "C.Mp4", "a.mxf"));
    EXPECT_THAT(Found({folder / "a.xmp", folder / "B.MOV"}, false), ElementsAre("a.xmp", "B.MOV"));
}

TEST_F(ClipListing, FramesOfOneSequenceAreOneClip) {
    const fs::path frames = mFolder / "frames";
    for (const char* name : {"A.0001.dpx", "A.0002.dpx", "A.0003.dpx", "A.xmp", "B_00001.ari", "B_00002.ari",
                             "B_001.ari", "IMG-0001.mov", "IMG-0002.mov", "0001.exr"}) {
        support::WriteFile(frames / name, "x");
    }
    EXPECT_THAT(Found({frames / "A.0003.dpx", frames / "A.xmp", frames}, false),
                ElementsAre("frames/A.0003.dpx", "frames/0001.exr", "frames/B_00001.ari", "frames/B_001.ari",
                            "frames/IMG-0001.mov", "frames/IMG-0002.mov"));
}

TEST_F(ClipListing, MissingPathsAreErrorsAndTheRestGoesOn) {
    EXPECT_THAT(Found({mFolder / "missing.mov", mFolder / "B.MOV", mFolder / "dangling.mov"}, false),
                ElementsAre("B.MOV"));
    ASSERT_EQ(mErrors.size(), 2U);
    EXPECT_EQ(mErrors[0].path, mFolder / "missing.mov");
    EXPECT_EQ(mErrors[0].reason, "No such file or directory");
    EXPECT_EQ(mErrors[1].path, mFolder / "dangling.mov");
}

} // namespace

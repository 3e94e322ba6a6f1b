#include <sys/stat.h>

#include <gmock/gmock.h>

#include "clip/FindClips.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class FindClips : public testing::Test {
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

    // All below the folder, "" for itself.
    std::vector<std::string> Found(const std::vector<std::string>& names, bool recursive = false) {
        std::vector<fs::path> paths;
        for (const std::string& name : names) {
            paths.push_back(mFolder / name);
        }
        zonstory::FoundClips found = zonstory::FindClips(paths, recursive);
        std::vector<std::string> clips;
        for (const fs::path& clip : found.clips) {
            clips.push_back(clip.lexically_relative(mFolder.Path()));
        }
        mErrors = std::move(found.errors);
        return clips;
    }

    support::TemporaryFolder mFolder;
    std::vector<zonstory::UnsearchedPath> mErrors;
};

TEST_F(FindClips, FolderStandsForItsMediaFilesOnceAndOutOfLoops) {
    EXPECT_THAT(Found({""}), ElementsAre("B.MOV", "C.Mp4", "a.mxf"));
    EXPECT_THAT(Found({""}, true), ElementsAre("B.MOV", "C.Mp4", "a.mxf", "day/d.wav", "day/cam.mov/e.avi"));
    EXPECT_THAT(mErrors, testing::IsEmpty());
}

TEST_F(FindClips, FileStandsForItselfOnceUnderItsFirstName) {
    fs::create_hard_link(mFolder / "a.mxf", mFolder / "z.mxf");
    EXPECT_THAT(Found({"notes.txt", "day/again.mov", "B.MOV", "z.mxf", "", "notes.txt"}),
                ElementsAre("notes.txt", "day/again.mov", "z.mxf", "C.Mp4"));
}

TEST_F(FindClips, SidecarNamedBesideItsClipIsPartOfIt) {
    for (const char* name : {"B.MOV.XMP", "C.xmp", "alone.xmp"}) {
        support::WriteFile(mFolder / name, "x");
    }
    EXPECT_THAT(Found({"B.MOV.XMP", "C.xmp", "a.xmp", "alone.xmp", "./B.MOV", ""}),
                ElementsAre("alone.xmp", "./B.MOV", "C.Mp4", "a.mxf"));
    EXPECT_THAT(Found({"a.xmp", "B.MOV"}), ElementsAre("a.xmp", "B.MOV"));
}

TEST_F(FindClips, FramesOfOneSequenceAreOneClip) {
    for (const char* name : {"A.0001.dpx", "A.0002.dpx", "A.0003.dpx", "A.xmp", "B_00001.ari", "B_00002.ari",
                             "B_001.ari", "IMG-0001.mov", "IMG-0002.mov", "0001.exr"}) {
        support::WriteFile(mFolder / "frames" / name, "x");
    }
    EXPECT_THAT(Found({"frames/A.0003.dpx", "frames/A.xmp", "frames"}),
                ElementsAre("frames/A.0003.dpx", "frames/0001.exr", "frames/B_00001.ari", "frames/B_001.ari",
                            "frames/IMG-0001.mov", "frames/IMG-0002.mov"));
}

TEST_F(FindClips, MissingPathsAreErrorsAndTheRestGoesOn) {
    EXPECT_THAT(Found({"missing.mov", "B.MOV", "dangling.mov"}), ElementsAre("B.MOV"));
    ASSERT_EQ(mErrors.size(), 2U);
    EXPECT_EQ(mErrors[0].path, mFolder / "missing.mov");
    EXPECT_EQ(mErrors[0].reason, "No such file or directory");
    EXPECT_EQ(mErrors[1].path, mFolder / "dangling.mov");
}

} // namespace

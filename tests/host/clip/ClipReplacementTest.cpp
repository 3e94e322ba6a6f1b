#include <future>
#include <optional>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "Source.h"
#include "clip/Interrupt.h"
#include "clip/Replacement.h"
#include "support/RunProgram.h"

namespace {

namespace fs = std::filesystem;
using support::SetSource;
using testing::ElementsAre;

struct stat StatusOf(const fs::path& file) {
    struct stat status {};
    EXPECT_EQ(::lstat(file.c_str(), &status), 0);
    return status;
}

class ClipReplacement : public testing::Test {
protected:
    support::TemporaryFolder mFolder;
    const fs::path mClip = support::MakeClip(mFolder.Path(), support::SampleNamed("MovIndexAtEnd"));
    const std::string mOld = support::ReadFile(mClip);
};

TEST_F(ClipReplacement, KeepsModeOwnerAttributesAndTime) {
    ASSERT_EQ(::chmod(mClip.c_str(), 0640), 0);
    const bool hasAttributes = ::setxattr(mClip.c_str(), "user.slate", "12A", 3, 0) == 0;
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(mClip.c_str(), 1234, 5678), 0);
    }
    const struct timespec times[] = {{1000, 5}, {2000, 7}};
    ASSERT_EQ(::utimensat(AT_FDCWD, mClip.c_str(), times, 0), 0);
    const struct stat before = StatusOf(mClip);
    EXPECT_THAT(zonstory::UpdateClip(mClip, {.preserveTime = true}, SetSource()).warnings, ElementsAre());
    const struct stat after = StatusOf(mClip);
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_mtim.tv_sec, 2000);
    EXPECT_EQ(after.st_mtim.tv_nsec, 7);
    char value[8] = {};
    EXPECT_EQ(::getxattr(mClip.c_str(), "user.slate", value, sizeof value), hasAttributes ? 3 : -1);
    EXPECT_STREQ(value, hasAttributes ? "12A" : "");
}

// A folder may hand an access list to all that is made in it; "user 1234 may write" here.
TEST_F(ClipReplacement, GetsNoAccessListThatTheClipLacked) {
    const std::string list("\2\0\0\0"
                           "\1\0\7\0\xFF\xFF\xFF\xFF"
                           "\2\0\6\0\xD2\4\0\0"
                           "\4\0\5\0\xFF\xFF\xFF\xFF"
                           "\20\0\7\0\xFF\xFF\xFF\xFF"
                           "\40\0\5\0\xFF\xFF\xFF\xFF",
                           44);
    if (::setxattr(mFolder.Path().c_str(), "system.posix_acl_default", list.data(), list.size(), 0) != 0) {
        GTEST_SKIP() << "no access lists here";
    }
    EXPECT_THAT(zonstory::UpdateClip(mClip, {}, SetSource()).warnings, ElementsAre());
    EXPECT_EQ(::getxattr(mClip.c_str(), "system.posix_acl_access", nullptr, 0), -1);
}

TEST_F(ClipReplacement, FollowsLinksAndKeepsThem) {
    fs::create_directory(mFolder / "elsewhere");
    fs::create_symlink("../end.mov", mFolder / "elsewhere" / "link.mov");
    const zonstory::UpdateResult result = zonstory::UpdateClip(mFolder / "elsewhere" / "link.mov", {}, SetSource());
    EXPECT_EQ(result.file, fs::canonical(mClip));
    EXPECT_TRUE(fs::is_symlink(mFolder / "elsewhere" / "link.mov"));
    EXPECT_THAT(support::NamesIn(mFolder / "elsewhere"), ElementsAre("link.mov"));
    EXPECT_FALSE(support::ReadFile(mClip) == mOld);
}

// A recorder that still writes, a sync tool that replaces: what they did stays.
TEST_F(ClipReplacement, NeverTakesThePlaceOfAClipThatChanged) {
    const auto commit = [&](auto meddle) {
        zonstory::TargetFile target = zonstory::TargetFile::Open(mClip);
        zonstory::Replacement replacement(target);
        replacement.Create();
        meddle();
        const std::string meddled = fs::exists(mClip) ? support::ReadFile(mClip) : "gone";
        EXPECT_THROW(replacement.Commit(false), zonstory::ClipError);
        EXPECT_EQ(fs::exists(mClip) ? support::ReadFile(mClip) : "gone", meddled);
    };
    commit([&] { support::WriteFile(mClip, mOld + "more"); });
    commit([&] { // the same length, and the time set back
        const auto time = fs::last_write_time(mClip);
        support::WriteFile(mClip, mOld + "MORE");
        fs::last_write_time(mClip, time);
    });
    commit([&] {
        support::WriteFile(mFolder / "new", mOld);
        fs::rename(mFolder / "new", mClip);
    });
    commit([&] { fs::remove(mClip); });
    EXPECT_THAT(support::NamesIn(mFolder.Path()), ElementsAre());
}

// Where the locks of two runs do not meet, or somebody tidies up.
TEST_F(ClipReplacement, PutsNothingButTheProvenFileInPlace) {
    for (const bool isExchanged : {true, false}) {
        zonstory::TargetFile target = zonstory::TargetFile::Open(mClip);
        zonstory::Replacement replacement(target);
        replacement.Create();
        fs::remove(replacement.Path());
        if (isExchanged) {
            support::WriteFile(replacement.Path(), "half of another run's copy");
        }
        EXPECT_THROW(replacement.Commit(false), zonstory::FileError);
        EXPECT_EQ(support::ReadFile(mClip), mOld);
    }
}

TEST_F(ClipReplacement, NeverTakesThePlaceOfASidecarThatCameMeanwhile) {
    zonstory::TargetFile target = zonstory::TargetFile::OpenOrAbsent(mFolder / "new.xmp");
    zonstory::Replacement replacement(target);
    replacement.Create();
    support::WriteFile(mFolder / "new.xmp", "theirs");
    EXPECT_THROW(replacement.Commit(false), zonstory::ClipError);
    EXPECT_EQ(support::ReadFile(mFolder / "new.xmp"), "theirs");
}

TEST_F(ClipReplacement, WhatTheChangeThrowsLeavesNothing) {
    const auto fail = [](SXMPMeta&) { throw std::logic_error("mine"); };
    EXPECT_THROW(zonstory::UpdateClip(mClip, {}, fail), std::logic_error);
    EXPECT_TRUE(support::ReadFile(mClip) == mOld);
    EXPECT_THAT(support::NamesIn(mFolder.Path()), ElementsAre("end.mov"));
}

// In a process of its own, since an interrupt is for good.
TEST_F(ClipReplacement, InterruptLeavesTheOldClipAndNothingElse) {
    const auto run = [&] {
        try {
            zonstory::UpdateClip(mClip, {}, [](SXMPMeta& xmp) {
                SetSource()(xmp);
                zonstory::RequestInterrupt();
            });
        } catch (const zonstory::ClipInterrupted&) {
            std::_Exit(3);
        }
        std::_Exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(3), "");
    EXPECT_TRUE(support::ReadFile(mClip) == mOld);
    EXPECT_THAT(support::NamesIn(mFolder.Path()), ElementsAre("end.mov"));
}

// As a batch does it, each thread with clips of its own.
TEST(ConcurrentThreads, WorkOnDifferentClips) {
    const support::TemporaryFolder folder;
    std::vector<fs::path> clips;
    for (const char* name : {"MovIndexInFront", "Mp4IndexAtEnd", "Avi", "Wav", "Mp3", "Mkv"}) {
        clips.push_back(support::MakeClip(folder.Path(), support::SampleNamed(name)));
    }
    constexpr int kRounds = 20;
    std::optional<zonstory::KeptFolder> kept(std::in_place);
    std::vector<std::future<void>> threads;
    for (const fs::path& clip : clips) {
        threads.push_back(std::async(std::launch::async, [&clip, &kept] {
            for (int round = 1; round <= kRounds; ++round) {
                zonstory::UpdateClip(clip, {}, SetSource(std::to_string(round)), &*kept);
            }
        }));
    }
    for (std::size_t index = 0; index < clips.size(); ++index) {
        EXPECT_NO_THROW(threads[index].get());
        EXPECT_EQ(support::SourceOf(clips[index]), std::to_string(kRounds)) << clips[index];
    }
    kept.reset();
    EXPECT_EQ(support::NamesIn(folder.Path()).size(), clips.size() + 1); // a sidecar
}

// Each run sets a property of its own; one that read before another wrote would undo it.
TEST(ConcurrentRuns, LoseNoUpdate) {
    const std::vector<std::string> properties = {"coverage", "format", "identifier", "source", "relation", "type"};
    for (const char* name : {"MovIndexInFront", "Wav", "Mkv"}) {
        const support::TemporaryFolder folder;
        const fs::path clip = support::MakeClip(folder.Path(), support::SampleNamed(name));
        constexpr int kRounds = 5;
        for (int round = 0; round < kRounds; ++round) {
            std::vector<support::RunningProgram> runs;
            for (const std::string& property : properties) {
                runs.emplace_back(std::vector<std::string>{CLIP_DRIVER, clip.native(), "own" + property,
                                                           property + std::to_string(round)});
            }
            for (support::RunningProgram& run : runs) {
                const support::ProgramResult result = run.Wait();
                EXPECT_EQ(result.exitCode, 0) << result.output;
            }
            const SXMPMeta xmp = zonstory::ReadClip(clip, {}).xmp;
            for (const std::string& property : properties) {
                std::string value;
                xmp.GetProperty(support::kDublinCore, ("own" + property).c_str(), &value, nullptr);
                EXPECT_EQ(value, property + std::to_string(round));
            }
        }
        EXPECT_EQ(support::NamesIn(folder.Path()).size(), support::SampleNamed(name).isInside ? 1U : 2U);
    }
}

} // namespace

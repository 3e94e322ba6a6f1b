#include <functional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Source.h"
#include "clip/WorkLock.h"
#include "clip/Workspace.h"
#include "support/MessageOf.h"

namespace {

namespace fs = std::filesystem;
using support::SetSource;
using zonstory::FileDescriptor;

class ClipsInUse : public testing::Test {
protected:
    std::string ReasonFor(const zonstory::ClipOptions& options = {}, zonstory::KeptFolder* kept = nullptr) {
        return support::MessageOf<zonstory::FileError>(
            [&] { zonstory::UpdateClip(mClip, options, SetSource(std::to_string(++mRound)), kept); });
    }

    std::string PrefixOf(const fs::path& clip) const { return zonstory::WorkPrefix(clip.filename()); }

    support::TemporaryFolder mFolder;
    const fs::path mClip = support::MakeClip(mFolder.Path(), support::SampleNamed("Wav"));
    const fs::path mWorking = mFolder / ".zonstory-work";
    int mRound = 0;
};

TEST_F(ClipsInUse, AreLeftAlone) {
    ASSERT_EQ(::chmod(mClip.c_str(), 0444), 0);
    EXPECT_EQ(ReasonFor(), "is protected against writing");
    ASSERT_EQ(::chmod(mClip.c_str(), 0644), 0);
    EXPECT_THAT(ReasonFor({.settle = std::chrono::seconds(100)}), testing::MatchesRegex("was changed .* ago, less.*"));
    {
        const FileDescriptor recorder(::open(mClip.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
        const FileDescriptor player(::open(mClip.c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_EQ(ReasonFor(), "is open for writing in another program");
    }
    const FileDescriptor player(::open(mClip.c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(ReasonFor(), "");
}

// A program may come while the new version is made.
TEST_F(ClipsInUse, AreLeftAloneInTheLastMoment) {
    FileDescriptor recorder;
    const auto change = [&](SXMPMeta& xmp) {
        SetSource()(xmp);
        recorder = FileDescriptor(::open(mClip.c_str(), O_WRONLY | O_CLOEXEC));
    };
    EXPECT_THROW(zonstory::UpdateClip(mClip, {}, change), zonstory::FileError);
    EXPECT_EQ(support::SourceOf(mClip), "");
}

TEST_F(ClipsInUse, ByAnotherRunAreWaitedForAndSaidToBe) {
    fs::create_directory(mWorking);
    const FileDescriptor working(::open(mWorking.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::fchmod(working.Get(), 0775), 0);
    FileDescriptor lock;
    ASSERT_EQ(zonstory::TryLock(working, PrefixOf(mClip), lock), zonstory::LockAttempt::Locked);
    std::string waitedFor;
    zonstory::KeptFolder kept(
        {.wait = std::chrono::seconds(2), .onWait = [&](const fs::path& clip, const std::string& holder) {
             waitedFor = clip.filename().native() + ' ' + holder;
         }});
    const std::string holder = "process " + std::to_string(::getpid()) + " on ";
    EXPECT_THAT(ReasonFor({}, &kept), testing::StartsWith("is in work by " + holder));
    EXPECT_THAT(waitedFor, testing::StartsWith(mClip.filename().native() + ' ' + holder));
    struct stat status {};
    ASSERT_EQ(::fstat(lock.Get(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0660U) << "the folder's group works there as well";
    zonstory::KeptFolder without({.useLocks = false});
    EXPECT_EQ(ReasonFor({}, &without), "");
}

// What a killed run left goes with the next run in the folder, whatever its clip is called today.
TEST_F(ClipsInUse, LeftoversGoWhenNobodyHoldsThem) {
    const std::string live = PrefixOf("live.mov");
    for (const bool isUnchanged : {false, true}) {
        for (const std::string& name : {PrefixOf("gone.mov") + "1.mov", live + "2.mov", std::string("notes.txt")}) {
            support::WriteFile(mWorking / name, "x");
        }
        const FileDescriptor working(::open(mWorking.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        FileDescriptor lock;
        ASSERT_EQ(zonstory::TryLock(working, live, lock), zonstory::LockAttempt::Locked);
        mRound -= isUnchanged ? 1 : 0;
        EXPECT_EQ(ReasonFor(), "");
        EXPECT_THAT(support::NamesIn(mWorking),
                    testing::UnorderedElementsAre(live + "2.mov", live + "lock", "notes.txt"));
        fs::remove_all(mWorking);
    }
}

} // namespace

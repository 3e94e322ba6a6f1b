#include <sys/stat.h>
#include <unistd.h>

#include "Source.h"
#include "support/MessageOf.h"

namespace {

namespace fs = std::filesystem;
using support::SetSource;
using testing::HasSubstr;
using testing::Not;

// The reason, in one line that does not name the clip; empty when there was none.
std::string ReasonFor(const fs::path& clip, const std::string& value = "v") {
    const std::string reason =
        support::MessageOf<zonstory::FileError>([&] { zonstory::UpdateClip(clip, {}, SetSource(value)); });
    EXPECT_THAT(reason, testing::AllOf(Not(HasSubstr("\n")), Not(HasSubstr(clip.filename().native()))));
    return reason;
}

struct RefusalCase {
    const char* sample; ///< Empty for a file of the bytes alone.
    std::size_t cut;    ///< How many bytes its end loses: the end of the media, or the index.
    const char* file;
    std::string bytes;
    const char* reason;
};

// clang-format off
const RefusalCase kRefusals[] = {
    {"", 0, "A.mov", "", "is empty"},
    {"", 0, "A.xmp", "<x/>", "is a sidecar"},
    {"", 0, "A.XMP", "<x/>", "is a sidecar"},
    {"", 0, "A.mp4", std::string("\0\0\0\x14" "ftypmp42\0\0\0\0mp42\0\0\0\x10mdat12345678", 36), "no index"},
    {"Mp4IndexAtEnd",   700, "A.mp4", "", "damaged"},
    {"Mp4IndexInFront", 700, "A.mp4", "", "damaged"},
    {"MovIndexInFront", 700, "A.mov", "", "damaged"},
    {"Avi",             700, "A.avi", "", "damaged"},
    {"Wav",             700, "A.wav", "", "damaged"},
};
// clang-format on

TEST(ClipRefusals, LeaveTheClipAsItWas) {
    for (const RefusalCase& c : kRefusals) {
        SCOPED_TRACE(std::string(c.sample) + ' ' + c.reason);
        const support::TemporaryFolder folder;
        const fs::path clip = folder / c.file;
        std::string bytes = c.bytes;
        if (*c.sample != '\0') {
            const fs::path made = support::MakeClip(folder.Path(), support::SampleNamed(c.sample));
            bytes = support::ReadFile(made);
            bytes.resize(bytes.size() - c.cut);
            fs::remove(made);
        }
        support::WriteFile(clip, bytes);
        const auto time = fs::last_write_time(clip);
        EXPECT_THAT(ReasonFor(clip), HasSubstr(c.reason));
        EXPECT_TRUE(support::ReadFile(clip) == bytes);
        EXPECT_EQ(fs::last_write_time(clip), time);
        EXPECT_THAT(support::NamesIn(folder.Path()), testing::ElementsAre(c.file));
    }
}

TEST(ClipKinds, OnlyRegularFilesAreClips) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_THAT(ReasonFor(folder / "missing"), HasSubstr("No such file"));
    EXPECT_THAT(ReasonFor(folder / "dangling"), HasSubstr("No such file"));
    EXPECT_THAT(ReasonFor(folder / "loop"), HasSubstr("symbolic links"));
    EXPECT_THAT(ReasonFor(folder.Path()), HasSubstr("is a folder"));
    EXPECT_THAT(ReasonFor(folder / "pipe"), HasSubstr("not a regular file"));
    EXPECT_THAT(ReasonFor("/dev/null"), HasSubstr("not a regular file"));
}

TEST(Sidecars, ThatAreNoXmpAreNeverWrittenOver) {
    for (const std::string& foreign :
         {std::string(), std::string("camera notes"), std::string("<notes>x</notes>"),
          std::string("<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF"), std::string(64, '\0')}) {
        SCOPED_TRACE(foreign);
        const support::TemporaryFolder folder;
        support::WriteFile(folder / "A.mkv", "media");
        support::WriteFile(folder / "A.xmp", foreign);
        EXPECT_THAT(ReasonFor(folder / "A.mkv"), HasSubstr("not XMP"));
        EXPECT_EQ(support::ReadFile(folder / "A.xmp"), foreign);
        EXPECT_THAT(support::NamesIn(folder.Path()), testing::ElementsAre("A.mkv", "A.xmp"));
    }
}

TEST(Sidecars, ThatAreNoFilesAreRefused) {
    const support::TemporaryFolder folder;
    support::WriteFile(folder / "A.mkv", "media");
    support::WriteFile(folder / "B.mkv", "media");
    fs::create_directory(folder / "A.xmp");
    fs::create_symlink("nowhere", folder / "B.xmp");
    EXPECT_EQ(ReasonFor(folder / "A.mkv"), "its sidecar is a folder");
    EXPECT_EQ(ReasonFor(folder / "B.mkv"), "its sidecar cannot be found: No such file or directory");
}

// Whoever owns the working folder could exchange the new version behind the program's back.
TEST(WorkingFolder, OfAnotherUserWhereNobodyMayTouchAnothersFiles) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the root user can give a folder to somebody else";
    }
    const support::TemporaryFolder folder;
    const fs::path clip = support::MakeClip(folder.Path(), support::SampleNamed("MovIndexAtEnd"));
    const std::string bytes = support::ReadFile(clip);
    const fs::path working = folder / ".zonstory-work";
    support::WriteFile(working / "somebody's", "work");
    ASSERT_EQ(::chown(working.c_str(), 1234, 1234), 0);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 01777), 0);
    EXPECT_EQ(ReasonFor(clip), "its working folder .zonstory-work belongs to another user");
    EXPECT_TRUE(support::ReadFile(clip) == bytes);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0); // here he could change the clip itself
    EXPECT_EQ(ReasonFor(clip), "");
}

// As an ordinary user, since no permission holds for the root user.
class Permissions : public testing::Test {
protected:
    void SetUp() override {
        mClip = support::MakeClip(mFolder.Path(), support::SampleNamed("MovIndexAtEnd"));
        if (::geteuid() == 0) {
            constexpr uid_t kNobody = 65534;
            ASSERT_EQ(::chown(mFolder.Path().c_str(), kNobody, kNobody), 0);
            ASSERT_EQ(::chown(mClip.c_str(), kNobody, kNobody), 0);
            ASSERT_EQ(::seteuid(kNobody), 0);
        }
        mBytes = support::ReadFile(mClip);
    }

    void TearDown() override {
        fs::permissions(mFolder.Path(), fs::perms::owner_all);
        if (::getuid() == 0) {
            ASSERT_EQ(::seteuid(0), 0);
        }
        EXPECT_THAT(support::NamesIn(mFolder.Path()), testing::ElementsAre("end.mov"));
    }

    support::TemporaryFolder mFolder;
    fs::path mClip;
    std::string mBytes;
};

TEST_F(Permissions, ClipThatMayNotBeReadOrWritten) {
    fs::permissions(mClip, fs::perms::owner_read);
    EXPECT_THAT(ReasonFor(mClip), HasSubstr("protected against writing"));
    EXPECT_EQ(support::ReadFile(mClip), mBytes);
    fs::permissions(mClip, fs::perms::none);
    EXPECT_THAT(ReasonFor(mClip), HasSubstr("cannot be read: Permission denied"));
}

TEST_F(Permissions, FolderThatMayNotBeWritten) {
    EXPECT_EQ(ReasonFor(mClip), "");
    const std::string written = support::ReadFile(mClip);
    fs::permissions(mFolder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(ReasonFor(mClip), ""); // nothing to change, so nothing to write
    EXPECT_NE(ReasonFor(mClip, "other"), "");
    EXPECT_TRUE(support::ReadFile(mClip) == written);
}

TEST_F(Permissions, FolderThatMayBeEnteredButNotListed) {
    fs::permissions(mFolder.Path(), fs::perms::owner_write | fs::perms::owner_exec);
    EXPECT_EQ(ReasonFor(mClip), "");
    EXPECT_FALSE(support::ReadFile(mClip) == mBytes);
}

} // namespace

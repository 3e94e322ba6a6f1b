#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "clip/Clip.h"
#include "support/ClipSamples.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kDublinCore = "http://purl.org/dc/elements/1.1/";

void Update(const fs::path& clip, const zonstory::ClipOptions& options = {}) {
    zonstory::UpdateClip(clip, options, [](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", "v"); });
}

// The reason, in one line that does not name the clip; empty when there was none.
std::string ReasonFor(const fs::path& clip, const zonstory::ClipOptions& options = {}) try {
    Update(clip, options);
    return {};
} catch (const zonstory::ClipError& error) {
    EXPECT_THAT(error.what(), testing::Not(testing::HasSubstr("\n")));
    EXPECT_THAT(error.what(), testing::Not(testing::HasSubstr(clip.filename().native())));
    return error.what();
}

struct RefusalCase {
    const char* name;
    const char* sample; ///< Empty for a file of the bytes alone.
    std::size_t cut;    ///< How many bytes its end loses.
    const char* file;
    std::string bytes;
    const char* reason;
};
void PrintTo(const RefusalCase& c, std::ostream* stream) {
    *stream << c.name;
}

class ClipRefusals : public testing::TestWithParam<RefusalCase> {};

TEST_P(ClipRefusals, LeaveTheClipAsItWas) {
    const RefusalCase& c = GetParam();
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
    EXPECT_THAT(ReasonFor(clip), testing::HasSubstr(c.reason));
    EXPECT_TRUE(support::ReadFile(clip) == bytes);
    EXPECT_EQ(fs::last_write_time(clip), time);
    EXPECT_THAT(support::NamesIn(folder.Path()), testing::ElementsAre(c.file));
}

// What is cut off takes the end of the media, or the index, with it.
INSTANTIATE_TEST_SUITE_P(
    Clips, ClipRefusals,
    testing::Values(RefusalCase{"Empty", "", 0, "A.mov", "", "is empty"},
                    RefusalCase{"Sidecar", "", 0, "A.xmp", "<x/>", "is a sidecar"},
                    RefusalCase{"SidecarInCapitals", "", 0, "A.XMP", "<x/>", "is a sidecar"},
                    RefusalCase{"Mp4WithoutIndex", "", 0, "A.mp4",
                                std::string("\0\0\0\x14"
                                            "ftypmp42\0\0\0\0mp42\0\0\0\x10mdat12345678",
                                            36),
                                "no index"},
                    RefusalCase{"Mp4CutInItsIndex", "Mp4IndexAtEnd", 700, "A.mp4", "", "damaged"},
                    RefusalCase{"Mp4CutInItsMedia", "Mp4IndexInFront", 700, "A.mp4", "", "damaged"},
                    RefusalCase{"MovCutInItsMedia", "MovIndexInFront", 700, "A.mov", "", "damaged"},
                    RefusalCase{"AviCut", "Avi", 700, "A.avi", "", "damaged"},
                    RefusalCase{"WavCut", "Wav", 700, "A.wav", "", "damaged"},
                    RefusalCase{"WmvCut", "Wmv", 700, "A.wmv", "", "damaged"},
                    RefusalCase{"FlvCut", "Flv", 30, "A.flv", "", "damaged"}),
    [](const auto& sample) { return std::string(sample.param.name); });

TEST(ClipKinds, OnlyRegularFilesAreClips) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_THAT(ReasonFor(folder / "missing"), testing::HasSubstr("No such file"));
    EXPECT_THAT(ReasonFor(folder / "dangling"), testing::HasSubstr("No such file"));
    EXPECT_THAT(ReasonFor(folder / "loop"), testing::HasSubstr("symbolic links"));
    EXPECT_THAT(ReasonFor(folder.Path()), testing::HasSubstr("is a folder"));
    EXPECT_THAT(ReasonFor(folder / "pipe"), testing::HasSubstr("not a regular file"));
    EXPECT_THAT(ReasonFor("/dev/null"), testing::HasSubstr("not a regular file"));
}

struct ForeignSidecar {
    const char* name;
    std::string bytes;
};

TEST(Sidecars, ThatAreNoXmpAreNeverWrittenOver) {
    for (const ForeignSidecar& foreign : {ForeignSidecar{"empty", ""}, ForeignSidecar{"text", "camera notes"},
                                          ForeignSidecar{"xml", "<notes>x</notes>"},
                                          ForeignSidecar{"half", "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF"},
                                          ForeignSidecar{"zeros", std::string(64, '\0')}}) {
        SCOPED_TRACE(foreign.name);
        const support::TemporaryFolder folder;
        support::WriteFile(folder / "A.mkv", "media");
        support::WriteFile(folder / "A.xmp", foreign.bytes);
        EXPECT_THAT(ReasonFor(folder / "A.mkv"), testing::HasSubstr("not XMP"));
        EXPECT_EQ(support::ReadFile(folder / "A.xmp"), foreign.bytes);
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
    EXPECT_THAT(ReasonFor(mClip), testing::HasSubstr("protected against writing: Permission denied"));
    EXPECT_EQ(support::ReadFile(mClip), mBytes);
    fs::permissions(mClip, fs::perms::none);
    EXPECT_THAT(ReasonFor(mClip), testing::HasSubstr("cannot be read: Permission denied"));
}

TEST_F(Permissions, FolderThatMayNotBeWritten) {
    Update(mClip);
    const std::string written = support::ReadFile(mClip);
    fs::permissions(mFolder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    Update(mClip); // nothing to change, so nothing to write
    EXPECT_THROW(
        zonstory::UpdateClip(mClip, {}, [](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", "other"); }),
        zonstory::ClipError);
    EXPECT_TRUE(support::ReadFile(mClip) == written);
}

TEST_F(Permissions, FolderThatMayBeEnteredButNotListed) {
    fs::permissions(mFolder.Path(), fs::perms::owner_write | fs::perms::owner_exec);
    Update(mClip);
    EXPECT_FALSE(support::ReadFile(mClip) == mBytes);
}

} // namespace

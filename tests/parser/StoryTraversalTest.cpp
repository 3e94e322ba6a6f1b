#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace zonstoryparser;
using support::MakeScene;
using support::MakeSection;

class StoryTraversal : public ::testing::Test {
protected:
    StoryTraversal() {
        mStory->version = u"1.0";
        mStory->document = new Document;
        mStory->document->version = u"7";
    }

    void SetBody(boost::intrusive_ptr<Section> section) {
        mStory->document->body = new Stream;
        mStory->document->body->section = section;
    }

    void AddComments(boost::intrusive_ptr<Section> section) {
        mStory->document->commentStreams.emplace_back(new CommentStream);
        mStory->document->commentStreams.back()->section = section;
    }

    std::filesystem::path Dump(int scene) const {
        return mFolder / ("exoTestXMPBufferDumpFile_Scene_" + std::to_string(scene) + "_Shot_1.txt");
    }

    std::string ActionIn(const std::filesystem::path& dump) const {
        const std::string packet = support::ReadFile(dump);
        SXMPMeta xmp(packet.data(), packet.size());
        return support::ValueOf(GetActionFromXMP, xmp);
    }

    support::DumpFolder mFolder;
    boost::intrusive_ptr<Talewright> mStory{new Talewright};
    UString mReport = u"before";
};

TEST_F(StoryTraversal, ReportsVersionsAndWhatIsMissing) {
    EXPECT_TRUE(TraverseStory(mStory, mReport));
    EXPECT_EQ(mReport, u"Story Version: 1.0  Document Version: 7\nThe skrx file had no body?");

    mStory->document->body = new Stream;
    mStory->document->commentStreams.resize(1); // a null entry
    EXPECT_TRUE(TraverseStory(mStory, mReport));
    EXPECT_EQ(mReport, u"Story Version: 1.0  Document Version: 7");

    mStory->document.reset();
    EXPECT_TRUE(TraversalFiles(*mStory).empty());
    mReport = u"before";
    EXPECT_TRUE(TraverseStory(mStory, mReport));
    EXPECT_EQ(mReport, u"before");

    EXPECT_FALSE(TraverseStory(nullptr, mReport));
    EXPECT_EQ(mReport, u"Talewright Ptr is NULL");
    EXPECT_TRUE(support::NamesIn(mFolder.Path()).empty());
}

TEST_F(StoryTraversal, DumpsEachSceneAndLetsCommentsOverwriteTheBody) {
    SetBody(MakeSection({MakeScene({{kAction, u"one"}}), nullptr, MakeScene({{kTransition, u"CUT"}}),
                         MakeScene({{kAction, u"three"}})}));
    AddComments(MakeSection({MakeScene({{kAction, u"comment one"}})}));
    AddComments(nullptr);
    ASSERT_TRUE(TraverseStory(mStory, mReport));
    EXPECT_EQ(support::NamesIn(mFolder.Path()), (std::vector<std::string>{Dump(1).filename(), Dump(3).filename()}));
    EXPECT_EQ(TraversalFiles(*mStory), (std::vector<UString>{Dump(1).u16string(), Dump(3).u16string()}));
    EXPECT_EQ(ActionIn(Dump(1)), "comment one");
    EXPECT_EQ(ActionIn(Dump(3)), "three");
}

TEST_F(StoryTraversal, WritesThroughNothingThatWasPlanted) {
    support::WriteFile(mFolder / "victim", "precious");
    std::filesystem::create_symlink(mFolder / "victim", Dump(1));
    std::filesystem::create_hard_link(mFolder / "victim", Dump(2));
    ASSERT_EQ(::mkfifo(Dump(3).c_str(), 0600), 0);
    std::filesystem::create_directory(Dump(4));
    std::filesystem::create_symlink(mFolder / "nowhere", Dump(5));
    const auto scene = MakeScene({{kAction, u"new"}});
    SetBody(MakeSection({scene, scene, scene, scene, scene}));
    ASSERT_TRUE(TraverseStory(mStory, mReport));

    EXPECT_EQ(support::ReadFile(mFolder / "victim"), "precious");
    EXPECT_FALSE(std::filesystem::exists(mFolder / "nowhere"));
    EXPECT_TRUE(std::filesystem::is_directory(Dump(4)));
    for (const int written : {1, 2, 3, 5}) {
        EXPECT_EQ(std::filesystem::symlink_status(Dump(written)).type(), std::filesystem::file_type::regular);
        EXPECT_EQ(ActionIn(Dump(written)), "new");
    }
}

// A directory as /tmp is: everyone may make files in it, and remove only their own.
TEST_F(StoryTraversal, LeavesAnotherUsersFileAlone) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can make a file of another user";
    }
    constexpr uid_t kOther = 65533;
    constexpr uid_t kCaller = 65534;
    ASSERT_EQ(::chmod(mFolder.Path().c_str(), 01777), 0);
    support::WriteFile(Dump(1), "theirs");
    ASSERT_EQ(::chown(Dump(1).c_str(), kOther, kOther), 0);
    ASSERT_EQ(::chmod(Dump(1).c_str(), 0666), 0); // it could be written
    const auto scene = MakeScene({{kAction, u"new"}});
    SetBody(MakeSection({scene, scene}));

    ASSERT_EQ(::seteuid(kCaller), 0);
    const bool isDone = TraverseStory(mStory, mReport);
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_TRUE(isDone);
    EXPECT_EQ(support::ReadFile(Dump(1)), "theirs");
    EXPECT_EQ(ActionIn(Dump(2)), "new");
}

} // namespace

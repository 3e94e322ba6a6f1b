#include "story/SceneSelection.h"

#include <gmock/gmock.h>

#include "support/MessageOf.h"
#include <zonscreenplay/Screenplay.h>

namespace {

constexpr char kStory[] = R"(<Talewright version="1.0"><document>
<stream name="header"><section><scene sceneNumber="H"/></section></stream>
<stream name="body"><section><scene sceneNumber="1"/><scene sceneNumber=" 12A "/><scene sceneNumber="007"/>
<scene sceneNumber="2"><paragraph element="SceneHeading"><textRun>INT. A</textRun></paragraph></scene><scene sceneNumber="2"/>
<scene/><scene sceneNumber="#1"/></section></stream></document></Talewright>)";

class SceneSelection : public ::testing::Test {
protected:
    std::string ProblemWith(const char* name) const {
        return support::MessageOf<zonstory::SceneSelectionError>([&] { mScenes.Find(name); });
    }

    zonscreenplay::Screenplay mStory = zonscreenplay::ReadScreenplayFromMemory(kStory, "s");
    zonstory::SceneSelection mScenes{*mStory.root};
};

TEST_F(SceneSelection, FindsByNumberAsWrittenAndByPosition) {
    EXPECT_EQ(mScenes.Find("1").position, 1U);
    EXPECT_EQ(mScenes.Find("12A").position, 2U);
    EXPECT_EQ(mScenes.Find(" 007\t").position, 3U);
    EXPECT_EQ(mScenes.Find("#6").position, 6U);
    EXPECT_EQ(mScenes.Find("#6").scene, mStory.root->document->body->section->scenes[5]);
    EXPECT_EQ(mScenes.All().size(), 7U);
}

TEST_F(SceneSelection, SaysWhatItDoesNotFind) {
    EXPECT_EQ(ProblemWith("99"), "no scene '99' among the story's 7 scenes");
    EXPECT_EQ(ProblemWith("H"), "no scene 'H' among the story's 7 scenes");
    EXPECT_EQ(ProblemWith("#8"), "no scene '#8' among the story's 7 scenes");
    EXPECT_EQ(ProblemWith("#0"), "no scene '#0' among the story's 7 scenes");
    EXPECT_EQ(ProblemWith("12a"), "no scene '12a'; the story writes it '12A'");
    EXPECT_EQ(ProblemWith("7"), "no scene '7'; the story writes it '007'");
    EXPECT_EQ(ProblemWith(" "), "no scene is named");
}

TEST_F(SceneSelection, ListsAllScenesOfAnAmbiguousName) {
    EXPECT_EQ(ProblemWith("2"), "scene '2' is ambiguous: #4 (INT. A), #5");
    EXPECT_EQ(ProblemWith("#1"), "scene '#1' is ambiguous: #1, #7");
    EXPECT_EQ(mScenes.Find("#7").position, 7U);
}

} // namespace

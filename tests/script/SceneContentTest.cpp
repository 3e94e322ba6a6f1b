#include <gtest/gtest.h>

#include <zonstoryparser/SceneContent.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::MakeScene;

TEST(SceneContent, GathersByKindAndCarriesDialogueToTheNextSpeaker) {
    const auto scene = MakeScene({{kSceneHeading, u"EXT. OLD HEADING"},
                                  {kAction, u"Rain."},
                                  {kDialog, u"Hello"},
                                  {kCharacter, u"BOB"},
                                  {kDialog, u"A"},
                                  {kParenthetical, u"(beat)"},
                                  {kDialog, u"B"},
                                  {kCharacter, u"NOBODY"},
                                  {kShot, u"CLOSE ON"},
                                  {kSceneHeading, u"INT. HOUSE - NIGHT"},
                                  {kCharacter, u"ANN"},
                                  {kDialog, u"Yes."},
                                  {kAction, u""},
                                  {kAction, u" Pours."},
                                  {kTransition, u"CUT TO:"}});
    scene->paragraphs.insert(scene->paragraphs.begin(), nullptr);
    scene->paragraphs[2]->textRuns.emplace_back(nullptr);
    scene->paragraphs[2]->textRuns.push_back(support::MakeParagraph(kAction, {u" Wind."})->textRuns[0]);
    const SceneContent content = GatherSceneContent(*scene);
    EXPECT_EQ(content.firstParagraphID, u"p0");
    EXPECT_EQ(content.heading, u"INT. HOUSE - NIGHT");
    EXPECT_EQ(content.setting + u'|' + content.location + u'|' + content.timeOfDay, u"INT|HOUSE|NIGHT");
    EXPECT_EQ(content.action, u"Rain. Wind.     Pours."); // two spaces also for a paragraph without text
    EXPECT_EQ(support::Lines(content.dialogues), (std::vector<std::string>{"BOB: Hello  A  B", "ANN: Yes."}));
}

TEST(SpeakerName, LeavesOutWhatTheCueAdds) {
    EXPECT_EQ(SpeakerName(u"ANN (V.O.)"), u"ANN");
    EXPECT_EQ(SpeakerName(u" ANN (O.S.) (CONT'D) "), u"ANN");
    EXPECT_EQ(SpeakerName(u"小明（旁白）"), u"小明");
    EXPECT_EQ(SpeakerName(u"(ALL)"), u"(ALL)");
    EXPECT_EQ(SpeakerName(u"MAN (40) AND DOG"), u"MAN (40) AND DOG");
}

} // namespace

#include <gtest/gtest.h>

#include <zonstoryparser/SceneContent.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::MakeScene;
using Strings = std::vector<std::string>;

// What the scene's packet carries; nothing when there is none.
Strings Packet(boost::intrusive_ptr<Scene> scene, std::int32_t index = 3) {
    std::vector<ShotXMP> shots(1);
    EXPECT_TRUE(GetSceneXMP(nullptr, scene, index, shots));
    if (shots.size() == 1) {
        return {};
    }
    EXPECT_EQ(shots.at(1).shotID, u"p0");
    SXMPMeta xmp(shots[1].xmpPacket.data(), shots[1].xmpPacket.size());
    return support::Carried(xmp);
}

TEST(ShotBreakdown, PutsTheSceneIntoOnePacket) {
    const auto scene = MakeScene({{kSceneHeading, u"INT. HOUSE - NIGHT"},
                                  {kAction, u"Rain."},
                                  {kCharacter, u"ANN"},
                                  {kDialog, u"Yes."},
                                  {kShot, u"CLOSE ON"}},
                                 u"12");
    scene->shotDuration = u"0:01:30";
    EXPECT_EQ(Packet(scene),
              (Strings{"setting INT", "location HOUSE", "time NIGHT", "number 12", "name INT - HOUSE - NIGHT - 12",
                       "scale 1/1", "length 90", "action Rain.", "ANN: Yes."}));
    EXPECT_EQ(Packet(MakeScene({{kAction, u"Rain."}}, u"9")), (Strings{"number 9", "name 9", "action Rain."}));
    for (const auto& [index, number] : {std::pair{-7, "0-7"}, {3, "003"}, {42, "042"}, {1234, "1234"}}) {
        EXPECT_EQ(Packet(MakeScene({{kSceneHeading, u"HOUSE"}}), index),
                  (Strings{"location HOUSE", std::string("number ") + number, std::string("name HOUSE - ") + number}));
    }
}

TEST(ShotBreakdown, SomeScenesYieldNoPacket) {
    const auto anonymous = MakeScene({{kAction, u"Rain."}, {kAction, u"Pours."}});
    anonymous->paragraphs[0]->objectID = ObjectID();
    const auto hollow = MakeScene({});
    hollow->paragraphs.emplace_back(nullptr);
    using Reason = NoPacketReason;
    for (const auto& [scene, reason] : {std::pair{MakeScene({}), Reason::NoParagraphs},
                                        {hollow, Reason::NoParagraphs},
                                        {anonymous, Reason::NoIdentity},
                                        {MakeScene({{kTransition, u"CUT TO:"}}), Reason::NothingSaid},
                                        {MakeScene({{kDialog, u"Hello"}}), Reason::NothingSaid},
                                        {MakeScene({{kCharacter, u"BOB"}}), Reason::NothingSaid},
                                        {MakeScene({{kAction, u"Rain."}}), Reason::None},
                                        {MakeScene({{kSceneHeading, u"X"}}), Reason::None}}) {
        EXPECT_EQ(WhyNoPacket(*scene), reason);
        EXPECT_EQ(Packet(scene).empty(), reason != Reason::None);
    }
}

TEST(ShotBreakdown, ResetsThePerShotAccumulators) {
    UString shotID = u"id";
    UString heading = u"INT. HOUSE";
    UString action = u"Rain.";
    std::vector<CharacterDialogue> dialogues = {{u"ANN", u"Hi."}};
    std::vector<ShotXMP> shots;
    for (int call = 0; call < 2; ++call) {
        PushShotXMP(shotID, u"1", -1, u"", heading, action, dialogues, shots);
        EXPECT_EQ(shots.size(), 1U);
        EXPECT_TRUE(shotID.empty() && action.empty() && dialogues.empty());
    }
    EXPECT_NE(shots[0].xmpPacket.find("<?xpacket end=\"w\"?>"), std::string::npos);
    EXPECT_EQ(heading, u"INT. HOUSE");
}

TEST(ShotBreakdown, ARefusedValueCostsWhatItsWriterHadStillToWrite) {
    EXPECT_EQ(Packet(MakeScene({{kSceneHeading, u"INT. A\uFFFF - DAY"}, {kAction, u"Rain."}}, u"4")),
              (Strings{"setting INT", "number 4", "action Rain."}));
    EXPECT_EQ(Packet(MakeScene({{kAction, u"\uFFFF"},
                                {kCharacter, u"ANN"},
                                {kDialog, u"Hi."},
                                {kCharacter, u"BOB"},
                                {kDialog, u"\uFFFE"},
                                {kCharacter, u"CY"},
                                {kDialog, u"Bye."}},
                               u"4")),
              (Strings{"number 4", "name 4", "ANN: Hi."}));
}

} // namespace

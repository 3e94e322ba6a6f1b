#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zonstoryparser/SceneContent.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::MakeScene;

// What a scene yields; read back from its packet.
struct Packet {
    SXMPMeta xmp;
    UString shotID;
};

std::vector<Packet> Packets(boost::intrusive_ptr<Scene> scene, std::int32_t index = 3) {
    std::vector<ShotXMP> shots;
    EXPECT_TRUE(GetSceneXMP(nullptr, scene, index, shots));
    std::vector<Packet> packets;
    for (const ShotXMP& shot : shots) {
        packets.push_back({SXMPMeta(shot.xmpPacket.data(), shot.xmpPacket.size()), shot.shotID});
    }
    return packets;
}

TEST(ShotBreakdown, PutsTheWholeSceneIntoOnePacket) {
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
                                  {kAction, u"Pours."},
                                  {kTransition, u"CUT TO:"}},
                                 u"12");
    scene->shotDuration = u"0:01:30";
    scene->paragraphs.insert(scene->paragraphs.begin(), nullptr);
    std::vector<Packet> packets = Packets(scene);
    ASSERT_EQ(packets.size(), 1U);
    SXMPMeta& xmp = packets[0].xmp;
    EXPECT_EQ(packets[0].shotID, u"p0");
    EXPECT_EQ(support::ValueOf(GetSceneSettingFromXMP, xmp), "INT");
    EXPECT_EQ(support::ValueOf(GetShotLocationFromXMP, xmp), "HOUSE");
    EXPECT_EQ(support::ValueOf(GetSceneTimeOfDayFromXMP, xmp), "NIGHT");
    EXPECT_EQ(support::ValueOf(GetShotNameFromXMP, xmp), "INT - HOUSE - NIGHT - 12");
    EXPECT_EQ(support::ValueOf(GetSceneNumberFromXMP, xmp), "12");
    EXPECT_EQ(support::ValueOf(GetShotNumberFromXMP, xmp), "(none)");
    EXPECT_EQ(support::ValueOf(GetShotDurationValueFromXMP, xmp), "90");
    EXPECT_EQ(support::ValueOf(GetShotDurationScaleFromXMP, xmp), "1/1");
    EXPECT_EQ(support::ValueOf(GetActionFromXMP, xmp), "Rain.  Pours.");
    EXPECT_EQ(support::DialogueOf(xmp), (std::vector<std::string>{"BOB: Hello  A  B", "ANN: Yes."}));
}

TEST(ShotBreakdown, NumbersAndNamesScenesThatHaveNone) {
    for (const auto& [index, number] : {std::pair{3, "003"}, {42, "042"}, {1234, "1234"}}) {
        std::vector<Packet> packets = Packets(MakeScene({{kSceneHeading, u"INT. HOUSE"}}), index);
        ASSERT_EQ(packets.size(), 1U);
        EXPECT_EQ(support::ValueOf(GetSceneNumberFromXMP, packets[0].xmp), number);
        EXPECT_EQ(support::ValueOf(GetShotNameFromXMP, packets[0].xmp), std::string("INT - HOUSE - ") + number);
    }
    std::vector<Packet> unheaded = Packets(MakeScene({{kAction, u"Rain."}}, u"9"));
    ASSERT_EQ(unheaded.size(), 1U);
    EXPECT_EQ(support::ValueOf(GetShotNameFromXMP, unheaded[0].xmp), "9");
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
        EXPECT_EQ(Packets(scene).empty(), reason != Reason::None);
    }
}

TEST(ShotBreakdown, AppendsAndResetsThePerShotAccumulators) {
    UString shotID = u"id";
    UString heading = u"INT. HOUSE";
    UString action = u"Rain.";
    std::vector<CharacterDialogue> dialogues = {{u"ANN", u"Hi."}};
    std::vector<ShotXMP> shots(1);
    PushShotXMP(shotID, u"1", -1, u"", heading, action, dialogues, shots);
    ASSERT_EQ(shots.size(), 2U);
    EXPECT_EQ(shots[1].shotID, u"id");
    EXPECT_NE(shots[1].xmpPacket.find("<?xpacket end=\"w\"?>"), std::string::npos);
    EXPECT_EQ(heading, u"INT. HOUSE");
    EXPECT_TRUE(shotID.empty() && action.empty() && dialogues.empty());
    PushShotXMP(shotID, u"1", -1, u"", heading, action, dialogues, shots);
    EXPECT_EQ(shots.size(), 2U);
}

TEST(ShotBreakdown, AValueThatXMPRefusesCostsThePacketThatValueAlone) {
    std::vector<Packet> packets = Packets(MakeScene({{kSceneHeading, u"INT. A\uFFFF - DAY"}, {kAction, u"Rain."}}));
    ASSERT_EQ(packets.size(), 1U);
    EXPECT_EQ(support::ValueOf(GetSceneSettingFromXMP, packets[0].xmp), "INT");
    EXPECT_EQ(support::ValueOf(GetShotLocationFromXMP, packets[0].xmp), "(none)");
    EXPECT_EQ(support::ValueOf(GetSceneTimeOfDayFromXMP, packets[0].xmp), "(none)");
    EXPECT_EQ(support::ValueOf(GetActionFromXMP, packets[0].xmp), "Rain.");
}

} // namespace

// Names as crews, cameras and editors write them, each with the rule it comes from.
#include "host/match/Support.h"

namespace zonstory {
namespace {

using test::SceneOf;

// 12A and A32B are scenes of the story beside 12 and A32; 300 is there twice.
const SceneNumbers& Story() {
    static const SceneNumbers story({"1",  "2",  "3",   "4",    "5",  "7",    "12",  "12A", "A12", "13", "14", "24",
                                     "25", "32", "A32", "A32B", "50", "101A", "300", "300", "720", "",   "422"});
    return story;
}

struct NameCase {
    const char* rule;
    const char* path;
    const char* scene;
};
void PrintTo(const NameCase& c, std::ostream* os) {
    *os << c.rule << ": " << c.path;
}

class Slate : public ::testing::TestWithParam<NameCase> {};

TEST_P(Slate, NamesItsScene) {
    EXPECT_EQ(SceneOf(GetParam().path, Story()), GetParam().scene) << GetParam().path;
}

INSTANTIATE_TEST_SUITE_P(
    SetUps, Slate,
    ::testing::Values(
        NameCase{"the master set-up has no letter", "12-3.mov", "12"},
        NameCase{"set-up letter, take", "13A-3.mov", "13"}, NameCase{"set-up letter, take word", "13B_T03.mov", "13"},
        NameCase{"blank for a dash", "13C 3.mov", "13"}, NameCase{"dash in blanks", "13D - 3.mov", "13"},
        NameCase{"underscore", "13E_3.mov", "13"}, NameCase{"dot", "13F.3.wav", "13"},
        NameCase{"letter apart", "13-G-3.mov", "13"}, NameCase{"I would read as 1", "13I-3.mov", "-"},
        NameCase{"O would read as 0", "13O-3.mov", "-"}, NameCase{"AA follows Z", "13AA-3.mov", "13"},
        NameCase{"two letters: 12A's set-up B, or 12's 28th", "12AB-3.mov", "- 12 12A"},
        NameCase{"two letters, and only one scene has them", "101AB-3.mov", "101A"},
        NameCase{"28th set-up of a lettered scene", "101AAC-3.mov", "101A"},
        NameCase{"the story's own letter wins", "12A-3.mov", "12A"},
        NameCase{"the story's letter and a set-up, or two set-up letters", "A32BC-2.mov", "- A32 A32B"},
        NameCase{"inserted scene", "A12-3.mov", "A12"}, NameCase{"inserted scene, set-up", "A32D-3.mov", "A32"},
        NameCase{"inserted scene that the story lacks is not the other", "B12-3.mov", "-"},
        NameCase{"zeros in front", "0012a-03.mov", "12A"}, NameCase{"lower case", "sc013b tk3.mov", "13"}));

INSTANTIATE_TEST_SUITE_P(
    Words, Slate,
    ::testing::Values(
        NameCase{"scene and take words", "SCENE 13 TAKE 3.mov", "13"}, NameCase{"short", "Sc13A Tk3.mov", "13"},
        NameCase{"letters", "S013A-T3.wav", "13"}, NameCase{"letters, no separator", "S13AT3.wav", "13"},
        NameCase{"dots", "Sc. 13 Tk. 3.mov", "13"}, NameCase{"comma", "Scene 13, Take 3.mov", "13"},
        NameCase{"all glued", "Scene13ATake3.mov", "13"}, NameCase{"take glued to the set-up", "13AT03.wav", "13"},
        NameCase{"set-up T before the take", "13TT03.wav", "13"},
        NameCase{"scene, shot and take", "Sc13Sh2Tk3.mov", "13"},
        NameCase{"shot in words", "Scene 13 Shot 2 Take 3.mov", "13"},
        NameCase{"number sign", "Scene no. 13 take 2.mov", "13"},
        NameCase{"inserted scene behind its word", "ScA12 Tk2.mov", "A12"},
        NameCase{"inserted scene behind S", "SA12-T2.wav", "A12"},
        NameCase{"inserted scene, apart", "Scene A 12 take 2.mov", "A12"},
        NameCase{"take first", "Take 3 Scene 13.mov", "13"}, NameCase{"slate word", "Slate 13A Take 3.mov", "13"},
        NameCase{"German", "Szene 13 Take 3.mov", "13"}, NameCase{"French", "Sc\xC3\xA8ne 13 prise 3.mov", "13"},
        NameCase{"French, accent apart", "Sce\xCC\x80ne 13 prise 3.mov", "13"},
        NameCase{"Spanish", "Escena 13 toma 3.mov", "13"}, NameCase{"Italian", "Scena 13 ciak 3.mov", "13"},
        NameCase{"a scene word makes a frame size a scene", "Sc720 Tk1.mov", "720"},
        NameCase{"a scene word makes 720P a set-up", "Scene 720P take 2.mov", "720"},
        NameCase{"a take word too", "720_T01.mov", "720"},
        NameCase{"a scene word makes 4K a set-up", "Sc4K Tk1.mov", "4"}));

INSTANTIATE_TEST_SUITE_P(
    Remarks, Slate,
    ::testing::Values(
        NameCase{"pick-up", "13A-3 PU.mov", "13"}, NameCase{"pick-up glued", "13APU-1.mov", "13"},
        NameCase{"pick-up number", "13A-PU2.mov", "13"}, NameCase{"mute", "13A_MOS_T1.mov", "13"},
        NameCase{"wild track", "13-WT1.wav", "13"}, NameCase{"wild track's own number", "WT13.wav", "-"},
        NameCase{"effects", "13A-3_VFX.mov", "13"}, NameCase{"camera glued", "13A-T3B.mov", "13"},
        NameCase{"camera word", "ACAM_13A-3.mov", "13"}, NameCase{"camera in two words", "A cam 13-3.mov", "13"},
        NameCase{"camera behind", "13A-3_CamB.mov", "13"}, NameCase{"track of a recorder", "13A-T03_1.wav", "13"},
        NameCase{"title in front", "The Willow - 13A-3.mov", "13"}, NameCase{"size of a shot", "13 wide.mov", "13"}));

INSTANTIATE_TEST_SUITE_P(Company, Slate,
                         ::testing::Values(NameCase{"date in front", "20240131_13A-3.mov", "13"},
                                           NameCase{"date with dashes", "2024-01-31_13A-3.mov", "13"},
                                           NameCase{"reel in front", "A007C006_160424_R28L_13A-3.mov", "13"},
                                           NameCase{"reel behind", "13A_T03_A001_C002_0101AB.mov", "13"},
                                           NameCase{"roll in front", "A007_13A-3.mov", "13"},
                                           NameCase{"frame size and rate", "13A-3_1920x1080_23.976.mov", "13"},
                                           NameCase{"codec", "13A-3_ProRes422_10bit.mov", "13"},
                                           NameCase{"timecode", "13A_T03_01_02_03_04.mov", "13"},
                                           NameCase{"take in front of a timecode", "13-02_01_02_03_04.mov", "13"},
                                           NameCase{"episode", "S01E02_13A-3.mov", "13"},
                                           NameCase{"day", "Day 3_13A-3.mov", "13"},
                                           NameCase{"version", "13A-3_v2.mov", "13"}));

INSTANTIATE_TEST_SUITE_P(
    NoScene, Slate,
    ::testing::Values(
        NameCase{"inside a word", "HOUSE12.mov", "-"}, NameCase{"inside a word, front", "12th.mov", "-"},
        NameCase{"inside a foreign word",
                 "\xD0\xB4\xD0\xBE\xD0\xBC"
                 "12.mov",
                 "-"},
        NameCase{"date", "20240112.mov", "-"}, NameCase{"short date", "160412.mov", "-"},
        NameCase{"date with dashes", "2024-01-12.mov", "-"}, NameCase{"European date", "12.01.2024.mov", "-"},
        NameCase{"month in words", "12 JAN 24.mov", "-"}, NameCase{"date and time", "2024-01-31 12.13.14.mov", "-"},
        NameCase{"date and short time", "2024-01-31_12-13.mov", "-"}, NameCase{"timecode", "01_02_03_04.mov", "-"},
        NameCase{"timecode, colons", "01:02:03:04", "-"}, NameCase{"lines", "720.mov", "-"},
        NameCase{"lines, progressive", "720p.mov", "-"}, NameCase{"frame size", "1920x1080.mov", "-"},
        NameCase{"4K", "4K.mov", "-"}, NameCase{"4K and more", "4K-25.mov", "-"}, NameCase{"UHD", "UHD 2160.mov", "-"},
        NameCase{"frame rate", "24fps.mov", "-"}, NameCase{"rate, progressive", "25p.mov", "-"},
        NameCase{"decimal rate", "23.976.mov", "-"}, NameCase{"decimal rate, no dot", "23_976.mov", "-"},
        NameCase{"codec", "H.264.mov", "-"}, NameCase{"codec's number", "ProRes 422.mov", "-"},
        NameCase{"bits", "12-bit.mov", "-"}, NameCase{"sound", "5.1.wav", "-"}, NameCase{"lens stop", "T2.8.mov", "-"},
        NameCase{"3D", "3D.mov", "-"}, NameCase{"reel", "A007C006_160424_R28L.mov", "-"},
        NameCase{"reel in pieces", "A001_C012_0101AB.R3D", "-"},
        NameCase{"reel's segment", "A001_C002_0101AB_012.R3D", "-"},
        NameCase{"reel with time", "A001_01311200_C012.braw", "-"},
        NameCase{"reel, letter apart", "A_0001C012_240131_120000_a1B2C.mxf", "-"},
        NameCase{"camera's file", "MVI_0012.MOV", "-"}, NameCase{"camera's file", "GX010012.MP4", "-"},
        NameCase{"camera's file", "C0012.MP4", "-"}, NameCase{"camera's file", "P1000012.MOV", "-"},
        NameCase{"memory card", "0012AB.MXF", "-"}, NameCase{"counter of five", "00012.MTS", "-"},
        NameCase{"roll", "A012.mov", "-"}, NameCase{"roll in words", "Roll 12.mov", "-"},
        NameCase{"shoot day", "Day 12.mov", "-"}, NameCase{"take alone", "Take 12.mov", "-"},
        NameCase{"season and episode", "S12E13.mov", "-"}, NameCase{"season", "S12 E13.mov", "-"},
        NameCase{"nothing", ".mov", "-"}));

INSTANTIATE_TEST_SUITE_P(InDoubt, Slate,
                         ::testing::Values(NameCase{"two slates", "13A-3_14B-2.mov", "- 13 14"},
                                           NameCase{"two scenes in words", "Sc13_Sc14.mov", "- 13 14"},
                                           NameCase{"joined", "Sc13+14.mov", "- 13 14"},
                                           NameCase{"joined by a word", "13 and 14.mov", "- 13 14"},
                                           NameCase{"one of two is not the story's", "Sc13+99.mov", "- 13"},
                                           NameCase{"range", "Scenes 12-14.mov", "- 12 14"},
                                           NameCase{"range or take", "12-14.mov", "- 12 14"},
                                           NameCase{"number in front of a slate", "14_13A-3.mov", "- 13 14"},
                                           NameCase{"A camera or A12", "A_12-3.mov", "- 12 A12"},
                                           NameCase{"letter of a set-up or a camera", "12-A-3.mov", "- 12 12A"},
                                           NameCase{"number twice in the story", "300A-3.mov", "- 300 300"},
                                           NameCase{"three numbers", "12-1-3.mov", "-"},
                                           NameCase{"among words", "12 monkeys.mov", "-"},
                                           NameCase{"scene that the story lacks", "Sc99 Tk2.mov", "-"}));

INSTANTIATE_TEST_SUITE_P(Folders, Slate,
                         ::testing::Values(NameCase{"folder in words", "Scene 13/C0001.MP4", "13"},
                                           NameCase{"folder with set-up", "SC13A/A007C006_160424_R28L.mov", "13"},
                                           NameCase{"folder is a number", "013/MVI_0001.MOV", "13"},
                                           NameCase{"above the camera's", "Scene 13/A cam/C0001.MP4", "13"},
                                           NameCase{"numbers above are cards", "13/CLIPS/C0001.MP4", "-"},
                                           NameCase{"name before folder", "Scene 14/13A-3.mov", "13"},
                                           NameCase{"a weak name yields to a sure folder", "Scene 13/3.mov", "- 3 13"},
                                           NameCase{"a take in the folder of a scene", "Scene 13/Take 3.mov", "13"},
                                           NameCase{"the name's scene is not the story's", "Scene 13/99A-3.mov", "-"},
                                           NameCase{"folders disagree", "Scene 13/Sc14/C0001.MP4", "- 13 14"},
                                           NameCase{"month and day", "01-12/C0001.MP4", "-"},
                                           NameCase{"day", "Day 13/C0001.MP4", "-"},
                                           NameCase{"card", "100CANON/MVI_0012.MOV", "-"}));

// A number alone is a slate of its own; only words make a scene.
TEST(ContinuousSlates, OnlySceneWordsNameAScene) {
    for (const char* const name :
         {"13-3.mov", "13A-3.mov", "13_T03.mov", "Slate 13 take 3.mov", "S13T3.wav", "13/x.mov"}) {
        EXPECT_EQ(SceneOf(name, Story(), SlateStyle::Continuous), "-") << name;
    }
    EXPECT_EQ(SceneOf("Scene 13 slate 14 take 3.mov", Story(), SlateStyle::Continuous), "13");
    EXPECT_EQ(ReadSlateNumber("213-4.mov").slate, "213");
    EXPECT_EQ(ReadSlateNumber("Slate 0213 take 4.mov").take, "4");
    EXPECT_EQ(ReadSlateNumber("213-4_214-1.mov").slate, "") << "two slates";
    EXPECT_EQ(ReadSlateNumber("A007C006_160424_R28L.mov").slate, "");
}

TEST(Takes, AreReadBesideTheScene) {
    const std::pair<const char*, const char*> cases[] = {
        {"13A-3", "3"},  {"13A_T03", "3"}, {"SCENE 13 TAKE 12", "12"}, {"13AT003_1", "3"},
        {"13 wide", ""}, {"13-A-4", "4"},  {"13A_MOS_T1", "1"},        {"13A-3-01", "3"}};
    for (const auto& [name, take] : cases) {
        const Decision decision = Decide(StatePath(name, SlateStyle::Scene), Story(), Confidence::Medium);
        EXPECT_EQ(decision.take, take) << name;
    }
}

// Stories number scenes within episodes, or by the decimal; only they make such names mean that.
TEST(CompositeNumbers, AreFoundWhereTheStoryHasThem) {
    const SceneNumbers story({"101-12", "101-13", "7.1", "7.2", "TITLE", "Sc. 9-a"});
    EXPECT_EQ(SceneOf("101-12A-3.mov", story), "101-12");
    EXPECT_EQ(SceneOf("101-13-2.mov", story), "101-13");
    EXPECT_EQ(SceneOf("7.1-3.mov", story), "7.1");
    EXPECT_EQ(SceneOf("9A-3.mov", story), "Sc. 9-a");
    EXPECT_EQ(SceneOf("7.3-3.mov", story), "-");
}

} // namespace
} // namespace zonstory

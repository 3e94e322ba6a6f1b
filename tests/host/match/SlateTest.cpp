// Names as crews, cameras and editors write them.
#include "host/match/Support.h"

namespace zonstory {
namespace {

using test::Rows;
using test::SceneOf;
using test::StatePath;

SceneNumbers UpTo(int last, std::vector<std::string> more = {}) {
    for (int scene = 1; scene <= last; ++scene) {
        more.push_back(std::to_string(scene));
    }
    return SceneNumbers(std::move(more));
}

// 12A and A32B are scenes of the story beside 12 and A32; 300 is there twice.
const SceneNumbers& Story() {
    static const SceneNumbers story({"1",  "2",  "3",   "4",    "5",  "7",    "12",  "12A", "A12", "13", "14", "24",
                                     "25", "32", "A32", "A32B", "50", "101A", "300", "300", "720", "",   "422"});
    return story;
}

// The scene; or "-" and the scenes that are left open.
constexpr char kAlone[] = R"(
12-3.mov = 12 | 13A-3.mov = 13 | 13B_T03.mov = 13 | 13C 3.mov = 13 | 13D - 3.mov = 13 | 13E_3.mov = 13
13F.3.wav = 13 | 13I-3.mov = - | 13AA-3.mov = 13 | 12AB-3.mov = - 12 12A | 101AAC-3.mov = 101A | 12A-3.mov = 12A
A32BC-2.mov = - A32 A32B | A12-3.mov = A12 | A32D-3.mov = A32 | B12-3.mov = - | 0012a-03.mov = 12A | sc013b tk3.mov = 13
SCENE 13 TAKE 3.mov = 13 | Sc13A Tk3.mov = 13 | S013A-T3.wav = 13 | S13AT3.wav = 13 | Sc. 13 Tk. 3.mov = 13
Scene13ATake3.mov = 13 | 13TT03.wav = 13 | Sc13Sh2Tk3.mov = 13 | Scene no. 13 take 2.mov = 13 | ScA12 Tk2.mov = A12
Scene A 12 take 2.mov = A12 | Take 3 Scene 13.mov = 13 | Slate 13A Take 3.mov = 13 | Szene 13 Take 3.mov = 13
Scène 13 prise 3.mov = 13 | Scène 13 prise 3.mov = 13 | Escena 13 toma 3.mov = 13 | Scena 13 ciak 3.mov = 13
Scene 720P take 2.mov = 720 | 720_T01.mov = 720 | Sc4K Tk1.mov = 4 | 13A-3 PU.mov = 13 | 13APU-1.mov = 13
13A_MOS_T1.mov = 13 | 13-WT1.wav = 13 | WT13.wav = - | ACAM_13A-3.mov = 13 | A cam 13-3.mov = 13 | 13A-3_CamB.mov = 13
13A-T03_1.wav = 13 | The Willow - 13A-3.mov = 13 | 13 wide.mov = 13 | 2024-01-31_13A-3.mov = 13
A007C006_160424_R28L_13A-3.mov = 13 | 13A_T03_A001_C002_0101AB.mov = 13 | A007_13A-3.mov = 13
13A-3_1920x1080_23.976.mov = 13 | 13-02_01_02_03_04.mov = 13 | S01E02_13A-3.mov = 13 | Day 3_13A-3.mov = 13
HOUSE12.mov = - | 12th.mov = - | дом12.mov = - | 20240112.mov = - | 160412.mov = - | 12.01.2024.mov = -
12 JAN 24.mov = - | 2024-01-31 12.13.14.mov = - | 01_02_03_04.mov = - | 720p.mov = - | 1920x1080.mov = - | 4K.mov = -
4K-25.mov = - | UHD 2160.mov = - | 24fps.mov = - | 23_976.mov = - | H.264.mov = - | ProRes 422.mov = - | 12-bit.mov = -
5.1.wav = - | T2.8.mov = - | 3D.mov = - | A007C006_160424_R28L.mov = - | A001_C002_0101AB_012.R3D = -
A001_01311200_C012.braw = - | A_0001C012_240131_120000_a1B2C.mxf = - | MVI_0012.MOV = - | GX010012.MP4 = -
P1000012.MOV = - | 0012AB.MXF = - | 00012.MTS = - | A012.mov = - | Roll 12.mov = - | S12E13.mov = - | .mov = -
13A-3_14B-2.mov = - 13 14 | Sc13_Sc14.mov = - 13 14 | Sc13+14.mov = - 13 14 | 13 and 14.mov = - 13 14
Sc13+99.mov = - 13 | Scenes 12-14.mov = - 12 14 | 12-14.mov = - 12 14 | 14_13A-3.mov = - 13 14
A_12-3.mov = - 12 A12 | 12-A-3.mov = - 12 12A | 300A-3.mov = - 300 300 | 12-1-3.mov = - | 12 monkeys.mov = -
Sc99 Tk2.mov = -
Scene 13/C0001.MP4 = 13 | SC13A/A007C006_160424_R28L.mov = 13 | 013/MVI_0001.MOV = 13
Scene 13/A cam/C0001.MP4 = 13 | 13/CLIPS/C0001.MP4 = - | Scene 14/13A-3.mov = 13 | Scene 13/3.mov = 13
Scene 13/Take 3.mov = 13 | Scene 13/99A-3.mov = - | Scene 13/Sc14/C0001.MP4 = - 13 14 | 01-12/C0001.MP4 = -
Day 13/C0001.MP4 = - | 100CANON/MVI_0012.MOV = -)";

TEST(Names, SayTheirSceneAlone) {
    for (const auto& [path, scene] : Rows(kAlone)) {
        EXPECT_EQ(SceneOf(path, Story()), scene) << path;
    }
}

std::string SceneAndTake(const Decision& decision, const SceneNumbers& story) {
    return !decision.scene ? "-" : story.Number(*decision.scene) + (decision.take.empty() ? "" : " " + decision.take);
}

// Scene and take, in a story of the scenes 1 to 140 and 540.
constexpr char kTakes[] = R"(
SC007/01_T02.mov = 7 2 | Sc25 Slate 11 Take 1 = 25 1 | 27-7_T01 = 27 1 | Bild 7 - 2 - 3 = 7 3 | S#19_C#3_T#1 = 19 1
12Apt2-3 = 12 3 | Scene 45 SL34 T1 = 45 1 | Szene 23 Klappe 45 Take 5 = 23 5 | Sc93_4T2A = 93 2
Scene 12 Kamera 2 Take 3 = 12 3 | Folge 2 Szene 32 Take 1 = 32 1 | Escena 6 Plano 3 Toma 1 = 6 1
Sz33_E03_T2 = 33 2 | S033_E03_T2 = 33 2 | S01P01P01 = 1 1 | SEQ07_PL02_PR1 = 7 1 | Sequence 47 Plan 2 Prise 4 = 47 4
94F-6B = 94 6 | 41F_7-02 = 41 7 | S81-C1-T4 = 81 4 | Scene 80/A-3.mov = 80 3 | 2U_18A-6 = 18 6 | D02_29_T01 = 29 1
B28E02T04 = 28 4 | E01S12T03 = 12 3 | SEC14_PL05_T3 = 14 3 | SEQ93/P05_04 = 93 4 | Wide 40-2 = -
540-2.mov = 540 2 | Sc1D Tk2 = 1 2 | 13A_T03 = 13 3 | 13AT003_1 = 13 3 | 13 A - 4 = 13 4 | 13A-3-01 = 13 3
Question 3 Take 2 = - | Line 3 Take 2 = - | Test 3 Take 2 = - | Song 3 Take 2 = - | Angle 3 Take 2 = - | Glorp 3 Take 2 = -
Behind the Scenes 3.mov = - | Trailer_16-9 = - | teaser_9-16 = - | cutdown_4-5 = - | Mix_5-1.wav = - | Trailer_2-30 = -
Drone 9-23 = - | iPhone 15-4 = - | S1H_0006.mov = - | Galaxy S23 1.mov = - | CookeS4_35mm_T2_13.mov = -
Video 22 (8).mov = - | V17-2 (1).mov = - | 0009T5.MXF = - | FFF88795-175C-B55C-A249-6B3BE7358AAA.mov = -)";

TEST(Names, SayTheirTakes) {
    const SceneNumbers story = UpTo(140, {"540"});
    for (const auto& [path, expected] : Rows(kTakes)) {
        const Decision decision = Decide(StatePath(path, story), story, Confidence::Medium);
        EXPECT_EQ(SceneAndTake(decision, story), expected) << path;
    }
}

// ---- Names read together ------------------------------------------------------------------------------------------------

struct RunCase {
    const char* name;
    std::string clips;                                           ///< With what each of them shows.
    std::vector<std::pair<std::size_t, const char*>> known = {}; ///< Scenes that a recorder noted, by clip.
};

const RunCase kRuns[] = {
    {"Takes of a title", "W_7_1 = 7 1 | W_7_2 = 7 2 | W_31_1 = 31 1 | W_31_2 = 31 2 | W_12_1 = 12 1 | W_12_2 = 12 2"},
    {"Set-ups like formats",
     "4A-1 = 4 1 | 4A-2 = 4 2 | 4D-1 = 4 1 | 4K-1 = 4 1 | 9D-1 = 9 1 | 9D-2 = 9 2 | 7D-1 = 7 1"},
    {"Shots and takes", "8-1-1 = 8 1 | 8-1-2 = 8 2 | 8-2-1 = 8 1 | 40-1-1 = 40 1 | 40-1-2 = 40 2 | 51-1-1 = 51 1"},
    {"Counter", "001 = - | 002 = - | 003 = - | 004 = - | 005 = - | 006 = -"},
    {"Two counters", "Glorp 1-1 = - | Glorp 1-2 = - | Glorp 2-1 = - | Glorp 2-2 = - | Glorp 3-1 = - | Glorp 3-2 = -"},
    {"Constant", "5D-1.mov = - | 5D-2.mov = - | 5D-3.mov = - | S2_0001.mov = - | S2_0002.mov = -"},
    {"Slates below the scenes of folders", "Scene 8/21-1 = 8 1 | Scene 8/22-1 = 8 1 | Scene 9/23-2 = 9 2"},
    {"Scenes in folders of scenes", "Sc8/8A-1 = 8 1 | Sc8/8B-1 = 8 1 | Sc9/9-2 = 9 2"},
    {"Numbered folders", "7/C0001.MP4 = 7 | 19/C0002.MP4 = 19 | 12A/C0003.MP4 = 12"},
    {"Days", "1/C0001.MP4 = - | 2/C0002.MP4 = - | 3/C0003.MP4 = -"},
    {"Taught", "77-3-1.wav = 3 1 | 78-9-2.wav = 9 2 | 79-9-1.wav = 9 1", {{0, "3"}, {1, "9"}}},
    {"Taught that it names none",
     "a1-3-1.wav = 5 | a2-9-2.wav = 6 | a3-9-1.wav = 7 | a4-8-1.wav = -",
     {{0, "5"}, {1, "6"}, {2, "7"}}}};

TEST(NamePatterns, ExplainAllNamesTogether) {
    const SceneNumbers story = UpTo(140);
    for (const RunCase& run : kRuns) {
        const auto rows = Rows(run.clips);
        std::vector<std::string> paths;
        std::vector<std::vector<Statement>> known(rows.size());
        for (const auto& [path, scene] : rows) {
            paths.push_back("/m/" + path);
        }
        for (const auto& [clip, scene] : run.known) {
            known[clip].push_back(StateField(Source::IXml, scene, ""));
        }
        const NamePatterns names(paths, known, story, {});
        for (std::size_t at = 0; at < rows.size(); ++at) {
            std::vector<Statement> statements = names.Statements(at);
            statements.insert(statements.end(), known[at].begin(), known[at].end());
            EXPECT_EQ(SceneAndTake(Decide(statements, story, Confidence::Medium), story), rows[at].second)
                << run.name << ": " << paths[at];
        }
    }
}

TEST(NamePatterns, TellWhatTheyAreAndWhoIsOdd) {
    const SceneNumbers story = UpTo(140);
    std::vector<std::string> paths;
    for (const char* const setUp : {"12A", "12B", "31A", "31B", "7A", "7B"}) {
        for (const char* const take : {"-1", "-2"}) {
            paths.push_back(std::string("/m/") + setUp + take + ".mov");
        }
    }
    paths.emplace_back("/m/12A_3.mov");
    const NamePatterns names(paths, {}, story, {});
    EXPECT_EQ(names.Lines(), std::vector<std::string>{"12 names like 7B-2: scene, set-up, take"});
    EXPECT_EQ(names.OddOnes(), std::vector<std::size_t>{12});
    EXPECT_FALSE(Decide(names.Statements(12), story, Confidence::Medium).scene);
}

TEST(GivenPattern, SaysWhatNamesCannot) {
    const SceneNumbers story = UpTo(140, {"12A"});
    const auto read = [&](const char* pattern, const std::string& name) {
        const std::vector<std::string> paths = {name};
        const NamePatterns names(paths, {}, story, {SlateStyle::Scene, GivenPattern(pattern)});
        return SceneAndTake(Decide(names.Statements(0), story, Confidence::High), story);
    };
    EXPECT_EQ(read("{scene}{setup}-{take}", "12B-03.mov"), "12 3");
    EXPECT_EQ(read("{scene}-{take}", "12a-3.mov"), "12A 3");
    EXPECT_EQ(read("{take}_{counter}_{scene}", "2_0042_17.mov"), "17 2");
    EXPECT_EQ(read("*_{shot}_{scene}_t{take}", "a_b_4_17_T9.wav"), "17 9");
    EXPECT_EQ(read("{scene}{setup}-{take}", "12B_03.mov"), "-") << "what does not fit says nothing";
    for (const char* const text : {"", "{take}", "{scene}{scene}", "{scene}{colour}", "{scene", "{}"}) {
        EXPECT_THROW(GivenPattern{text}, std::invalid_argument) << text;
    }
}

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

// Stories number scenes within episodes, or by the decimal; only they make such names mean that.
TEST(CompositeNumbers, AreFoundWhereTheStoryHasThem) {
    const SceneNumbers story({"101-12", "101-13", "7.1", "7.2", "2.28", "TITLE", "Sc. 9-a"});
    const auto rows = Rows("101-12A-3 = 101-12 | 101-13-2 = 101-13 | 7.1-3 = 7.1 | 9A-3 = Sc. 9-a | 7.3-3 = - | "
                           "SC2.28C_T02 = 2.28");
    for (const auto& [name, scene] : rows) {
        EXPECT_EQ(SceneOf(name, story), scene) << name;
    }
}

// 1D, 3D, 4K are set-ups where a field says so, whatever they look like in a name.
TEST(SceneFields, LoseNothing) {
    const SceneNumbers story = UpTo(14);
    for (const auto& [field, scene] :
         Rows("1D = 1 | 2D = 2 | 3D = 3 | 2K = 2 | 4K = 4 | 8K = 8 | Sc. 012A = 12 | 12-A = 12")) {
        const Decision decision = Decide({StateField(Source::IXml, field, "")}, story, Confidence::High);
        EXPECT_EQ(SceneAndTake(decision, story), scene) << field;
    }
}

} // namespace
} // namespace zonstory

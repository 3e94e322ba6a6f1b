#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleStory.h"
#include "Zonstory.h"

namespace {

using nlohmann::json;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class StoryVerbs : public ::testing::Test {
protected:
    StoryVerbs() { support::WriteFile(mZonstory / "s.skrx", support::kSampleStory); }

    // The results of a run that is done without a word.
    std::string Results(const std::vector<std::string>& arguments) const {
        const ZonstoryResult result = mZonstory.Run(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    Zonstory mZonstory;
};

TEST_F(StoryVerbs, ScenesAreOneRowEach) {
    EXPECT_EQ(Results({"scenes", "s.skrx"}),
              "#  scene  setting  location  time of day  duration  said  action  speakers\n"
              "1  1      INT      KÜCHE     NIGHT        0:01:30      4       3  ANN, 小明\n"
              "2  12A/B  EXT      PIER                                0       0\n"
              "3  12A:B                                               0       1\n"
              "4                                                      3       1  ANN\n"
              "5  2                                                   0       0\n"
              "6  2                                                   0       0\n");
    EXPECT_THAT(
        Results({"scenes", "s.skrx", "--format", "csv"}),
        StartsWith("position,number,setting,location,time_of_day,duration,dialogue_words,action_words,speakers\r\n"
                   "1,1,INT,KÜCHE,NIGHT,0:01:30,4,3,\"ANN, 小明\"\r\n"));
    const json document = json::parse(Results({"scenes", "s.skrx", "--format", "json"}));
    EXPECT_EQ(document["schema"], "zonstory.scenes");
    EXPECT_EQ(document["version"], 1);
    EXPECT_EQ(document["scenes"].size(), 6U);
    EXPECT_EQ(document["scenes"][0], (json{{"position", 1},
                                           {"number", "1"},
                                           {"setting", "INT"},
                                           {"location", "KÜCHE"},
                                           {"timeOfDay", "NIGHT"},
                                           {"duration", "0:01:30"},
                                           {"speakers", {"ANN", "小明"}},
                                           {"dialogueWords", 4},
                                           {"actionWords", 3}}));
}

TEST_F(StoryVerbs, CharactersAreOneRowEach) {
    EXPECT_EQ(Results({"characters", "s.skrx"}), "character  scenes  lines  words\n"
                                                 "ANN             2      3      5\n"
                                                 "小明            1      1      2\n");
    EXPECT_EQ(json::parse(Results({"characters", "s.skrx", "--format=json"}))["characters"][0],
              (json{{"character", "ANN"}, {"scenes", 2}, {"scenePositions", {1, 4}}, {"lines", 3}, {"words", 5}}));
}

TEST_F(StoryVerbs, InfoBeginsWithTheLibrarysReport) {
    EXPECT_THAT(Results({"info", "s.skrx"}), StartsWith("Story Version: 1.0  Document Version: 3.1\n"));
    const json document = json::parse(Results({"info", "s.skrx", "--format", "json"}));
    EXPECT_EQ(document["report"], "Story Version: 1.0  Document Version: 3.1");
    EXPECT_EQ(document["metaData"], "by nobody");
    EXPECT_EQ(document["tags"], json::array({"Prop: key"}));
    EXPECT_EQ(document["streams"][1]["author"], "Mara");
    EXPECT_EQ(document["scenes"].size(), 6U);
    EXPECT_THAT(Results({"info", "s.skrx", "--format", "csv"}),
                HasSubstr("\r\n1.0,3.1,screenplay,Short,2,6,15,16,2,1\r\n"));

    support::WriteFile(mZonstory / "bodyless.skrx", "<Talewright version='1.0'><document version='2'/></Talewright>");
    EXPECT_THAT(Results({"info", "bodyless.skrx"}),
                StartsWith("Story Version: 1.0  Document Version: 2\nThe skrx file had no body?\n"));
}

TEST_F(StoryVerbs, StoriesComeFromStandardInputToo) {
    EXPECT_EQ(mZonstory.Run({"scenes", "-"}, support::kSampleStory).out, Results({"scenes", "s.skrx"}));
    EXPECT_EQ(mZonstory.Run({"scenes", "-"}, "<a>").err, "standard input:1:4: not well-formed XML: no element found\n");
}

TEST_F(StoryVerbs, CheckReportsByLine) {
    const ZonstoryResult result = mZonstory.Run({"check", "s.skrx", "-q"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("s.skrx:13: scene 12A/B (#2): the time of day of 'EXT. PIER' is not recognised\n"
                                       "s.skrx:14: scene 12A:B (#3): the scene has no heading\n"));
    const json findings = json::parse(Results({"check", "s.skrx", "-q", "--format", "json"}))["findings"];
    EXPECT_EQ(findings[0]["kind"], "time-of-day");
    EXPECT_EQ(findings[0]["scene"], (json{{"position", 2}, {"number", "12A/B"}}));

    support::WriteFile(mZonstory / "bad.skrx", "<Talewright version='1.0'>\n<scene/></Talewright>");
    const ZonstoryResult bad = mZonstory.Run({"check", "bad.skrx", "--format", "csv"});
    EXPECT_EQ(bad.exitCode, 3);
    EXPECT_THAT(bad.out, HasSubstr("\r\n2,structure,,,\"We founda a Scene, but it's not part of a Section?\"\r\n"));
    EXPECT_EQ(bad.err, "bad.skrx:2:1: We founda a Scene, but it's not part of a Section?\n");
}

constexpr char kFDX[] = R"(<FinalDraft><Content>
<Paragraph Type="Cast List"><Text>JO</Text></Paragraph>
<Paragraph Type="Scene Heading" Number="1"><SceneProperties Page="2" Length="1 1/8"/><Text>INT. A - DAY</Text></Paragraph>
<Paragraph Type="Action"><Text RevisionID="3">Rain.</Text></Paragraph>
<Paragraph Type="Scene Heading" Number="2"><OmittedScene/><Text>OMITTED</Text></Paragraph>
</Content></FinalDraft>)";

TEST_F(StoryVerbs, TakeFDX) {
    support::WriteFile(mZonstory / "s.fdx", kFDX);
    EXPECT_EQ(
        Results({"scenes", "s.fdx"}),
        "#  scene  setting  location  time of day  duration  said  action  speakers  page  last page  eighths  "
        "omitted  revision\n"
        "1  1      INT      A         DAY                       0       1               2          3        9     "
        "      3\n"
        "2  2               OMITTED                             0       0                                      "
        "omitted\n");
    const json scenes = json::parse(Results({"scenes", "s.fdx", "--format=json"}))["scenes"];
    EXPECT_EQ(scenes[0]["page"], "2");
    EXPECT_EQ(scenes[0]["eighths"], 9);
    EXPECT_EQ(scenes[0]["revision"], "3");
    EXPECT_FALSE(scenes[0].contains("omitted"));
    EXPECT_EQ(scenes[1]["omitted"], true);
    EXPECT_FALSE(scenes[1].contains("page"));
    EXPECT_EQ(Results({"check", "s.fdx", "-q"}),
              "s.fdx:2: a paragraph of the kind 'Cast List' is left out: 'JO'\ns.fdx:5: scene 2 is omitted\n");
    EXPECT_EQ(mZonstory.Run({"scenes", "--from", "fdx", "-"}, kFDX).out, Results({"scenes", "s.fdx"}));
    EXPECT_EQ(mZonstory.Run({"scenes", "--from", "story", "s.fdx"}).exitCode, 3);
}

TEST_F(StoryVerbs, ConvertWritesAStoryFileThatReadsTheSame) {
    support::WriteFile(mZonstory / "s.fdx", kFDX);
    EXPECT_EQ(Results({"convert", "s.skrx", "-o", "t.skrx"}), "t.skrx\n");
    EXPECT_EQ(Results({"info", "t.skrx", "--format", "json"}), Results({"info", "s.skrx", "--format", "json"}));
    EXPECT_EQ(Results({"convert", "-q", "s.fdx", "-o", "f.skrx"}), "f.skrx\n");
    EXPECT_EQ(Results({"packets", "f.skrx", "-o", "-"}), Results({"packets", "s.fdx", "-o", "-"}));

    EXPECT_EQ(mZonstory.Run({"convert", "s.fdx", "-o", "s.pdf"}).exitCode, 2);
    std::filesystem::create_symlink("s.skrx", mZonstory / "link.skrx");
    EXPECT_EQ(mZonstory.Run({"convert", "s.skrx", "-o", "link.skrx"}).err, "link.skrx: is the screenplay itself\n");
}

TEST_F(StoryVerbs, PacketsNeverReplaceOneAnother) {
    const ZonstoryResult result = mZonstory.Run({"packets", "s.skrx", "-o", "deep/er"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "deep/er/scene-1.xmp\ndeep/er/scene-12A-B.xmp\ndeep/er/scene-12A-B_2.xmp\ndeep/er/scene-004.xmp\n");
    EXPECT_EQ(result.err, "scene #5 yields no packet: it has no paragraphs\n"
                          "scene #6 yields no packet: it has no paragraphs\n");
    EXPECT_THAT(support::ReadFile(mZonstory / "deep/er/scene-12A-B.xmp"), HasSubstr("12A/B"));
    EXPECT_THAT(support::ReadFile(mZonstory / "deep/er/scene-12A-B_2.xmp"), HasSubstr("12A:B"));

    const std::string chosen = Results({"packets", "s.skrx", "--scene", "#4", "--scene", "1", "-o", "-"});
    EXPECT_EQ(chosen, Results({"packets", "s.skrx", "--scene", "#4", "-o", "-"}) +
                          Results({"packets", "s.skrx", "--scene", "1", "-o", "-"}));
    EXPECT_THAT(chosen, StartsWith("<?xpacket begin="));
}

TEST_F(StoryVerbs, DumpListsTheFilesItWrote) {
    std::string expected = "Story Version: 1.0  Document Version: 3.1\n";
    for (const char* const number : {"1", "2", "3", "4"}) {
        expected +=
            (mZonstory / ("exoTestXMPBufferDumpFile_Scene_" + std::string(number) + "_Shot_1.txt")).string() + "\n";
    }
    EXPECT_EQ(Results({"dump", "s.skrx"}), expected);
    EXPECT_THAT(support::ReadFile(mZonstory / "exoTestXMPBufferDumpFile_Scene_1_Shot_1.txt"),
                HasSubstr("Rain on glass."));

    std::filesystem::remove(mZonstory / "exoTestXMPBufferDumpFile_Scene_2_Shot_1.txt");
    std::filesystem::create_directory(mZonstory / "exoTestXMPBufferDumpFile_Scene_2_Shot_1.txt");
    const ZonstoryResult blocked = mZonstory.Run({"dump", "s.skrx"});
    EXPECT_EQ(blocked.exitCode, 1);
    EXPECT_THAT(blocked.err, HasSubstr("_Scene_2_Shot_1.txt: could not be written\n"));
}

} // namespace

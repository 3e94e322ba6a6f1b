#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleStory.h"
#include "Zonstory.h"
#include "host/clip/ClipSamples.h"

// Logs filled with what the script says.
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::HasSubstr;

class LogVerb : public ::testing::Test {
protected:
    LogVerb() { support::WriteFile(mZonstory / "s.skrx", support::kSampleStory); }

    ZonstoryResult Log(std::vector<std::string> more) const {
        more.insert(more.begin(), {"log", "--story", "s.skrx"});
        return mZonstory.Run(more);
    }

    // The log with what it became of it.
    std::string Filled(const std::string& log, std::vector<std::string> more, int exitCode = 0) const {
        support::WriteFile(mZonstory / "in", log);
        more.insert(more.end(), {"in", "-o", "out"});
        const ZonstoryResult result = Log(more);
        EXPECT_EQ(result.exitCode, exitCode) << result.out << result.err;
        EXPECT_EQ(support::ReadFile(mZonstory / "in"), log);
        return support::ReadFile(mZonstory / "out");
    }

    Zonstory mZonstory;
};

TEST_F(LogVerb, FillsWhatIsSureAndListsTheRest) {
    const std::string head = "Heading\nColumn\nName\tScene\tTake\tSet\nData\n";
    const std::string rest = "\tKÜCHE\tNIGHT\tANN (V.O.): Hi there. / 小明: 你好\tRain on glass.\tANN, 小明\n";
    EXPECT_EQ(Filled(head + "1A-2.mov\t\t\t\n"
                            "a.mov\tSc 1B\t04\tEXT\n"
                            "1-3.mov\t2\t\t\n"
                            "drone.mov\t\t\t\n",
                     {}, 4),
              "Heading\nColumn\nName\tScene\tTake\tSet\tLocation\tDay/Night\tDialogue\tAction\tCharacters\nData\n"
              "1A-2.mov\t1\t2\tINT" +
                  rest + "a.mov\tSc 1B\t04\tEXT" + rest +
                  "1-3.mov\t2\t\t\t\t\t\t\t\n"
                  "drone.mov\t\t\t\t\t\t\t\t\n");
    const json document = json::parse(Log({"in", "--dry-run", "--format", "json"}).out);
    EXPECT_EQ(document["files"][0]["filled"], 3 + 2 * 5);
    json told = json::array();
    for (const json& entry : document["entries"]) {
        if (entry["state"] != "filled") {
            told.push_back({entry["line"], entry["state"], entry["column"], entry["old"], entry["value"]});
        }
    }
    EXPECT_EQ(told, json::parse(R"([[6, "kept", "Set", "EXT", "INT"], [7, "unsure", null, null, null],
                                    [8, "unsure", null, null, null]])"));
}

TEST_F(LogVerb, ChoosesAndRenamesColumns) {
    EXPECT_EQ(Filled("Datei;Szene;Ort\nx.mov;1;HOF\n", {"--columns", "clip=Datei", "--fill", "location=Ort,time=Zeit"}),
              "Datei;Szene;Ort;Zeit\nx.mov;1;HOF;NIGHT\n");
    EXPECT_EQ(Filled("Clip,Scene,Set,Take\nx,1,EXT,\n", {"--fill", "set", "--replace"}),
              "Clip,Scene,Set,Take\nx,1,INT,\n");
    EXPECT_EQ(Filled("File Name,Clip Directory,Scene,Shot,Take,Description,Comments,Keywords\n1C-4.mov,/V,,,,,,\n",
                     {"--profile", "media"}),
              "File Name,Clip Directory,Scene,Shot,Take,Description,Comments,Keywords\n"
              "1C-4.mov,/V,1,C,4,INT. KÜCHE - NIGHT,Rain on glass. / ANN (V.O.): Hi there. / 小明: 你好,"
              "\"INT, KÜCHE, NIGHT, ANN, 小明\"\n");
    EXPECT_EQ(Filled("Clip,Scene\nx\xE4,1\n", {"--fill", "location,characters"}, 1),
              "Clip,Scene,Location,Characters\nx\xE4,1,K\xDC"
              "CHE,\n");
    EXPECT_THAT(
        Filled(R"(<fcpxml><asset-clip name="1-2"/></fcpxml>)", {"--fill", "scene,take,characters"}),
        HasSubstr(R"(<keyword value="ANN, 小明"/><metadata><md key="com.apple.proapps.studio.scene" value="1"/>)"));
    EXPECT_EQ(Log({"in", "-n", "--fill", "set=X,time=X"}).exitCode, 0); // no such columns in FCPXML
}

// The same clip is asked as `match` asks it, and other logs are.
TEST_F(LogVerb, AsksClipsAndOtherLogs) {
    const fs::path clip = support::MakeClip(mZonstory.Folder(), support::SampleNamed("MovIndexAtEnd"));
    fs::create_directory(mZonstory / "c");
    fs::rename(clip, mZonstory / "c/A001C002_160424_R28L.mov");
    ASSERT_EQ(mZonstory.Run({"write", "s.skrx", "--scene", "1", "c"}).exitCode, 0);
    const std::string log = "Clip,Lens\nA001C002_160424_R28L,50\n";
    EXPECT_EQ(Filled(log, {"--fill", "set"}, 4), log);
    EXPECT_EQ(Filled(log, {"--fill", "set", "--clips", "c"}), "Clip,Lens,Set\nA001C002_160424_R28L,50,INT\n");
    support::WriteFile(mZonstory / "other.csv", "Clip,Scene\nA001C002_160424_R28L.mov,1\n");
    EXPECT_EQ(Filled(log, {"--fill", "scene", "--log", "other.csv"}), "Clip,Lens,Scene\nA001C002_160424_R28L,50,1\n");
    EXPECT_EQ(Filled(log, {"--log", "other.csv", "--clips", "c", "--min-confidence", "certain"}, 4), log);
}

TEST_F(LogVerb, WritesOnlyWhereItMay) {
    for (const char* const name : {"a.csv", "b.csv"}) {
        support::WriteFile(mZonstory / name, "Clip,Scene\n1A-1.mov,\n");
    }
    fs::create_directory(mZonstory / "c");
    support::WriteFile(mZonstory / "c/a.csv", "Clip,Scene\nx,1\n");
    const std::vector<std::vector<std::string>> refused = {{"a.csv"},
                                                           {"a.csv", "-o", "a.csv"},
                                                           {"a.csv", "-o", "s.skrx"},
                                                           {"a.csv", "b.csv", "-o", "."},
                                                           {"a.csv", "c/a.csv", "-o", "d"},
                                                           {"none.csv", "-o", "d"},
                                                           {"a.csv", "-o", "b.csv", "--log", "b.csv"},
                                                           {"-", "--in-place"},
                                                           {"a.csv", "--fill", "mood", "-o", "d"},
                                                           {"a.csv", "--fill", "set=X,time=X", "-o", "d"}};
    for (const std::vector<std::string>& arguments : refused) {
        EXPECT_EQ(Log(arguments).exitCode, 2) << arguments.back();
    }
    EXPECT_EQ(support::ReadFile(mZonstory / "a.csv"), "Clip,Scene\n1A-1.mov,\n");
    EXPECT_FALSE(fs::exists(mZonstory / "d"));
    EXPECT_EQ(Log({"a.csv", "b.csv", "-o", "d", "--fill", "scene"}).exitCode, 0);
    EXPECT_EQ(support::ReadFile(mZonstory / "d/b.csv"), "Clip,Scene\n1A-1.mov,1\n");
    EXPECT_EQ(Log({"a.csv", "--in-place", "--fill", "scene"}).exitCode, 0);
    EXPECT_EQ(support::ReadFile(mZonstory / "a.csv"), "Clip,Scene\n1A-1.mov,1\n");
    EXPECT_EQ(Log({"a.csv", "-o", "/dev/full"}).exitCode, 1);
}

} // namespace

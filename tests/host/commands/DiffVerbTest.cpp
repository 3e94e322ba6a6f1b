#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "Zonstory.h"

namespace {

using nlohmann::json;
using support::Zonstory;
using ::testing::HasSubstr;

std::string Scene(const std::string& number, const std::string& heading, const std::string& speech) {
    return heading + " #" + number + "#\n\nRain.\n\nANN\n" + speech + "\n\n";
}

class DiffVerb : public ::testing::Test {
protected:
    DiffVerb() {
        support::WriteFile(mZonstory / "old.fountain", Scene("1", "INT. HUT - DAY", "One two three.") +
                                                           Scene("2", "INT. BAR - DAY", "Four five six.") +
                                                           Scene("3", "EXT. SEA - DAY", "Seven eight nine."));
        support::WriteFile(mZonstory / "new.fountain", Scene("1", "INT. HUT - DAY", "One two three.") +
                                                           Scene("2", "INT. BAR - NIGHT", "Four five seven."));
    }

    // A clip with a sidecar, since no container is needed to carry a scene.
    void Write(const std::string& clip, const std::string& story, const std::string& scene) const {
        support::WriteFile(mZonstory / clip, "media");
        ASSERT_EQ(mZonstory.Run({"write", story, "--scene", scene, "--sidecar", clip}).exitCode, 0);
    }

    Zonstory mZonstory;
};

TEST_F(DiffVerb, TellsScenesAndEndsAsAsked) {
    EXPECT_EQ(mZonstory.Run({"diff", "old.fountain", "new.fountain", "--words", "--exit-code"}).exitCode, 5);
    EXPECT_EQ(mZonstory.Run({"diff", "old.fountain", "old.fountain", "--exit-code"}).exitCode, 0);
    EXPECT_EQ(mZonstory.Run({"diff", "old.fountain", "new.fountain", "--words"}).out,
              "2         changed             INT. BAR - NIGHT\n"
              "  heading      INT. BAR - [-DAY-] {+NIGHT+}\n"
              "  time of day  DAY -> NIGHT\n"
              "  ANN          Four five [-six.-] {+seven.+}\n"
              "3         removed             EXT. SEA - DAY\n"
              "1 same, 1 changed, 1 removed; 1 words in, 1 out\n");
    const json document = json::parse(mZonstory.Run({"diff", "old.fountain", "new.fountain", "--format", "json"}).out);
    EXPECT_EQ(document["scenes"][1]["changes"], json({"heading", "dialogue"}));
    EXPECT_EQ(document["scenes"][2]["newPosition"], nullptr);
}

TEST_F(DiffVerb, TellsClipsAndFeedsTheMap) {
    Write("a.mkv", "new.fountain", "1");
    Write("b.mkv", "old.fountain", "2");
    Write("c.mkv", "old.fountain", "3");
    Write("d.mkv", "new.fountain", "1");
    support::WriteFile(mZonstory / "e.mkv", "media");
    std::string edited = support::ReadFile(mZonstory / "d.xmp");
    edited.replace(edited.find("One two"), 7, "Own two");
    support::WriteFile(mZonstory / "d.xmp", edited);
    const std::vector<std::string> diff = {"diff", "old.fountain", "new.fountain", ".", "--sidecar", "--format", "csv"};
    const std::string table = mZonstory.Run(diff).out;
    EXPECT_EQ(table, "clip,scene,state,carried\r\n./a.mkv,#1,current,1\r\n./b.mkv,#2,outdated,2\r\n"
                     "./c.mkv,,unknown,3\r\n./d.mkv,,other,1\r\n./e.mkv,,none,\r\n");
    EXPECT_EQ(mZonstory.Run({"diff", "old.fountain", "new.fountain", ".", "--sidecar", "--outdated"}).out, "./b.mkv\n");
    const auto states = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments = {"coverage", "new.fountain", ".", "--sidecar", "--format", "csv"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return mZonstory.Run(arguments).out;
    };
    EXPECT_THAT(states({"--old", "old.fountain"}),
                HasSubstr("1,1,covered,./d.mkv,,other\r\n2,2,covered,./b.mkv,,outdated\r\n"));
    EXPECT_THAT(states({}), HasSubstr("2,2,covered,./b.mkv,,outdated\r\n")); // its own word for it
    EXPECT_THAT(mZonstory.Run({"show", "b.mkv", "--sidecar"}).out, HasSubstr("  script       old.fountain, xxh128:"));
    EXPECT_EQ(mZonstory.Run({"clear", "a.mkv", "--sidecar"}).exitCode, 0);
    EXPECT_THAT(mZonstory.Run({"show", "a.mkv", "--sidecar"}).out, HasSubstr("no script data"));
    EXPECT_EQ(mZonstory.Run({"write", "new.fountain", "--scene", "1", "--sidecar", "a.mkv"}).exitCode, 0);
    support::WriteFile(mZonstory / "map.csv", table);
    const auto written = mZonstory.Run({"write", "new.fountain", "--map", "map.csv", "--sidecar"});
    EXPECT_THAT(written.err, HasSubstr("1 written, 1 unchanged, 0 failed"));
    EXPECT_THAT(mZonstory.Run(diff).out, HasSubstr("./b.mkv,#2,current,2"));
}

} // namespace

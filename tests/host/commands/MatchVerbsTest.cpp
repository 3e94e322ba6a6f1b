#include <sys/stat.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "Zonstory.h"
#include "host/clip/ClipSamples.h"
#include "host/clip/MadeChunks.h"

// Which clip shows which scene: found, written, fed back, counted.
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using support::ExifToolValue;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::HasSubstr;

// Scenes 1, 2, 3, 12, 12A; 7 twice; one without a number.
std::string StoryOf(const std::vector<std::string>& numbers) {
    std::string scenes;
    for (const std::string& number : numbers) {
        scenes += number.empty() ? "<scene>" : "<scene sceneNumber=\"" + number + "\">";
        scenes +=
            "<paragraph element=\"SceneHeading\"><textRun>INT. ROOM " + number + " - DAY</textRun></paragraph></scene>";
    }
    return "<Talewright version=\"1.0\"><document><stream name=\"body\"><section>" + scenes +
           "</section></stream></document></Talewright>";
}

class MatchVerbs : public ::testing::Test {
protected:
    MatchVerbs() {
        support::WriteFile(mZonstory / "s.skrx", StoryOf({"1", "2", "3", "12", "12A", "7", "7", ""}));
        const fs::path mov = support::MakeClip(mZonstory.Folder(), support::SampleNamed("MovIndexAtEnd"));
        mMov = support::ReadFile(mov);
        fs::remove(mov);
    }

    // Clips of these names, in folders as the names have them.
    void Add(const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            support::WriteFile(mZonstory / name, mMov);
        }
    }

    // A recorder's WAV: made by ffmpeg, its iXML behind.
    void AddWav(const std::string& name, const std::string& scene) const {
        const fs::path made = support::MakeClip(mZonstory.Folder(), support::SampleNamed("Wav"));
        std::string bytes = support::ReadFile(made);
        fs::remove(made);
        bytes += support::Chunk("iXML", "<BWFXML><SCENE>" + scene + "</SCENE><TAKE>4</TAKE></BWFXML>");
        bytes.replace(4, 4, support::Little(bytes.size() - 8));
        support::WriteFile(mZonstory / name, bytes);
    }

    json Match(std::vector<std::string> more) const {
        more.insert(more.begin(), {"match", "s.skrx", "--format", "json", "-r"});
        const json document = json::parse(mZonstory.Run(more).out);
        json found = json::object();
        for (const json& clip : document["clips"]) {
            found[clip["clip"].get<std::string>()] = clip;
        }
        return found;
    }

    Zonstory mZonstory;
    std::string mMov;
};

TEST_F(MatchVerbs, EverySourceIsAskedInItsOrder) {
    Add({"c/12A-3.mov", "c/2B_T01.mov", "c/Sc1_Sc2.mov", "c/1080.mov", "c/7-1.mov",
         "c/Scene 3/A007C006_160424_R28L.mov", "c/1-9.mov"});
    AddWav("c/T001.wav", "3");
    AddWav("c/1C-2.wav", "2");
    ASSERT_EQ(::mkfifo((mZonstory / "pipe.wav").c_str(), 0600), 0);
    support::WriteFile(mZonstory / "log.csv", "Scene;Clip Name;Lens\n2;1-9;50 mm\n99;nowhere.mov;35 mm\n");

    const json found = Match({"c", "--log", "log.csv"});
    const std::tuple<const char*, json, const char*, json> rows[] = {
        // clip, scene, take, candidates
        {"c/12A-3.mov", "12A", "3", json::array()},
        {"c/2B_T01.mov", "2", "1", json::array()},
        {"c/Scene 3/A007C006_160424_R28L.mov", "3", "", json::array()},
        {"c/T001.wav", "3", "4", json::array()},
        {"c/1C-2.wav", "2", "4", json::array()}, // iXML is stronger than the name,
        {"c/1-9.mov", "2", "", json::array()},   // and a log than both
        {"c/1080.mov", nullptr, "", json::array()},
        {"c/Sc1_Sc2.mov", nullptr, "", {"1", "2"}},
        {"c/7-1.mov", nullptr, "", {"#6", "#7"}},
    };
    for (const auto& [clip, scene, take, candidates] : rows) {
        EXPECT_EQ(found.at(clip)["scene"], scene) << clip;
        EXPECT_EQ(found.at(clip)["take"], take) << clip;
        EXPECT_EQ(found.at(clip)["candidates"], candidates) << clip;
    }
    EXPECT_EQ(found["c/2B_T01.mov"]["evidence"]["setUp"], "B");
    EXPECT_EQ(found["c/1C-2.wav"]["disagreeing"][0]["scenes"], json{"1"});
    EXPECT_EQ(found["c/1-9.mov"]["log"][0]["fields"]["Lens"], "50 mm");

    const ZonstoryResult text = mZonstory.Run({"match", "s.skrx", "-r", "c", "--log", "log.csv"});
    EXPECT_EQ(text.exitCode, 4);
    EXPECT_THAT(text.err, AllOf(HasSubstr("6 matched, 2 ambiguous, 1 unmatched, 0 failed"),
                                HasSubstr("log rows that name a scene and none of these clips: 1")));
    EXPECT_THAT(text.out, HasSubstr("between 1 and 2"));
    EXPECT_EQ(mZonstory.Run({"match", "s.skrx", "c/12A-3.mov"}).exitCode, 0);
    EXPECT_THAT(mZonstory.Run({"match", "s.skrx", "pipe.wav"}).err, HasSubstr("is not a regular file"));
}

TEST_F(MatchVerbs, CsvIsWhatWriteReads) {
    Add({"c/12A-3.mov", "c/Sc1_Sc2.mov", "c/a, \"b\".mov"});
    const ZonstoryResult csv = mZonstory.Run({"match", "s.skrx", "c", "--format", "csv"});
    EXPECT_EQ(csv.exitCode, 4);
    support::WriteFile(mZonstory / "map.csv", csv.out);
    const ZonstoryResult written = mZonstory.Run({"write", "s.skrx", "--map", "map.csv"});
    EXPECT_EQ(written.exitCode, 0) << written.err;
    EXPECT_EQ(written.out, "c/12A-3.mov: written, scene 12A\n");
    EXPECT_THAT(written.err, HasSubstr("rows without a scene, passed over: 2"));
    EXPECT_EQ(ExifToolValue(mZonstory / "c/12A-3.mov", "XMP-xmpDM:Scene"), "12A");
    EXPECT_EQ(ExifToolValue(mZonstory / "c/Sc1_Sc2.mov", "XMP-xmpDM:Scene"), "");
}

TEST_F(MatchVerbs, WriteMatchWritesWhatIsSure) {
    Add({"c/12A-3.mov", "c/1-2.mov", "c/Sc1_Sc2.mov", "c/2 men.mov"});
    const auto untouched = support::ReadFile(mZonstory / "c/Sc1_Sc2.mov");
    const ZonstoryResult sure = mZonstory.Run({"write", "s.skrx", "--match", "--min-confidence", "high", "c"});
    EXPECT_EQ(sure.exitCode, 4);
    EXPECT_EQ(sure.out, "c/12A-3.mov: written, scene 12A\n");
    const ZonstoryResult usual = mZonstory.Run({"write", "s.skrx", "--match", "c", "--report", "r.csv"});
    EXPECT_EQ(usual.exitCode, 4);
    EXPECT_EQ(usual.out, "c/1-2.mov: written, scene 1\nc/12A-3.mov: unchanged, scene 12A\n");
    EXPECT_THAT(usual.err, AllOf(HasSubstr("c/Sc1_Sc2.mov: not written: between 1 and 2"),
                                 HasSubstr("c/2 men.mov: not written: perhaps 2")));
    EXPECT_THAT(usual.err, HasSubstr("1 written, 1 unchanged, 0 failed, 2 without a scene"));
    EXPECT_THAT(support::ReadFile(mZonstory / "r.csv"), HasSubstr("c/Sc1_Sc2.mov,,,,unmatched,between 1 and 2"));
    EXPECT_EQ(support::ReadFile(mZonstory / "c/Sc1_Sc2.mov"), untouched);
    EXPECT_EQ(ExifToolValue(mZonstory / "c/1-2.mov", "XMP-xmpDM:Scene"), "1");

    fs::rename(mZonstory / "c/1-2.mov", mZonstory / "c/3A-2.mov");
    EXPECT_EQ(Match({"c"})["c/3A-2.mov"]["scene"], "1") << "what a clip carries is stronger than its name";
    EXPECT_EQ(mZonstory.Run({"write", "s.skrx", "--match", "c/12A-3.mov", "c/missing.mov"}).exitCode, 1);
    EXPECT_EQ(mZonstory.Run({"write", "s.skrx", "--match", "--dry-run", "c/12A-3.mov"}).exitCode, 0);
}

TEST_F(MatchVerbs, ContinuousSlatesNeedALog) {
    Add({"c/213-4.mov", "c/12-1.mov"});
    support::WriteFile(mZonstory / "day.csv", "Slate,Take,Scene\n213,4,12A\n");
    const json alone = Match({"c", "--slates", "continuous"});
    EXPECT_EQ(alone["c/12-1.mov"]["verdict"], "unmatched");
    EXPECT_EQ(alone["c/213-4.mov"]["verdict"], "unmatched");
    EXPECT_EQ(Match({"c", "--slates", "continuous", "--log", "day.csv"})["c/213-4.mov"]["scene"], "12A");
    EXPECT_EQ(Match({"c"})["c/12-1.mov"]["scene"], "12");
}

TEST_F(MatchVerbs, AmbiguousLogRowsAreNamed) {
    Add({"a/C0001.mov", "b/C0001.mov"});
    support::WriteFile(mZonstory / "log.csv", "Clip,Scene\nC0001.mov,2\n");
    const ZonstoryResult result = mZonstory.Run({"match", "s.skrx", "a", "b", "--log", "log.csv"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.err, HasSubstr("log.csv:2: 2 clips are called \"C0001.mov\""));
    support::WriteFile(mZonstory / "log.csv", "Clip,Scene\nb/C0001.mov,2\n");
    EXPECT_EQ(Match({"a", "b", "--log", "log.csv"})["b/C0001.mov"]["scene"], "2");
}

TEST_F(MatchVerbs, UsersSayWhatNobodyKnows) {
    Add({"c/x1.mov", "c/Q_7_of_2.mov", "c/A001_C001_0115AB_001.mov", "c/A001_C001_0115AB_002.mov",
         "c/A002_C003_0115CD_proxy.mov"});
    support::WriteFile(mZonstory / "log.csv", "Filnavn;Bilete;Opptak\nx1.mov;2;5\n");
    const json known = Match({"c", "--log", "log.csv", "--columns", "file=Filnavn,scene=Bilete,take=Opptak"});
    EXPECT_EQ(known["c/x1.mov"]["scene"], "2");
    EXPECT_EQ(known["c/x1.mov"]["take"], "5");
    const ZonstoryResult unknown = mZonstory.Run({"match", "s.skrx", "c", "--log", "log.csv"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err, HasSubstr("found are Filnavn, Bilete, Opptak"));

    support::WriteFile(mZonstory / "log.csv", "Clip Name,Scene\nA001_C001_0115AB,3\nA002_C003_0115CD,12\n");
    const json made = Match({"c", "--log", "log.csv", "--pattern", "q_{take}_of_{scene}"});
    EXPECT_EQ(made["c/A001_C001_0115AB_001.mov"]["scene"], "3") << "a part of the clip";
    EXPECT_EQ(made["c/A001_C001_0115AB_002.mov"]["scene"], "3");
    EXPECT_EQ(made["c/A002_C003_0115CD_proxy.mov"]["scene"], "12") << "a copy of it";
    EXPECT_EQ(made["c/Q_7_of_2.mov"]["scene"], "2");
    EXPECT_EQ(made["c/Q_7_of_2.mov"]["take"], "7");
    EXPECT_EQ(mZonstory.Run({"match", "s.skrx", "c", "--pattern", "{take}"}).exitCode, 2);
}

TEST_F(MatchVerbs, CoverageCountsScenes) {
    Add({"c/12A-3.mov", "c/12A-1.mov", "c/x.mov", "c/y.mov"});
    mZonstory.Run({"write", "s.skrx", "--match", "c/12A-3.mov", "c/12A-1.mov"});
    const ZonstoryResult covered = mZonstory.Run({"coverage", "s.skrx", "c"});
    EXPECT_EQ(covered.exitCode, 0);
    EXPECT_EQ(covered.err, "1 of 8 scenes shown\n");
    EXPECT_THAT(covered.out, AllOf(HasSubstr("c/12A-1.mov (take 1), c/12A-3.mov (take 3)\n"),
                                   HasSubstr("c/x.mov carries no scene\n")));

    support::WriteFile(mZonstory / "other.skrx", StoryOf({"55"}));
    mZonstory.Run({"write", "other.skrx", "--scene", "55", "c/x.mov"});
    mZonstory.Run({"write", "s.skrx", "--scene", "#8", "c/y.mov"});
    const ZonstoryResult result = mZonstory.Run({"coverage", "s.skrx", "c", "--format", "json"});
    EXPECT_EQ(result.exitCode, 4) << "a clip carries a scene of another story";
    const json coverage = json::parse(result.out);
    EXPECT_EQ(coverage["schema"], "zonstory.coverage");
    EXPECT_EQ(coverage["unknown"][0]["clip"], "c/x.mov");
    EXPECT_EQ(coverage["scenes"][0]["clips"], json::array());
    EXPECT_EQ(coverage["scenes"][4]["clips"].size(), 2u);
    EXPECT_EQ(coverage["scenes"][7]["clips"][0]["clip"], "c/y.mov") << "a scene without number, by its place";

    const std::string csv = mZonstory.Run({"coverage", "s.skrx", "c", "--format", "csv"}).out;
    EXPECT_THAT(csv, AllOf(HasSubstr("5,12A,covered,c/12A-1.mov,1,current\r\n"), HasSubstr("1,1,uncovered,,,\r\n"),
                           HasSubstr(",55,unknown,c/x.mov,,unknown\r\n")));
}

} // namespace

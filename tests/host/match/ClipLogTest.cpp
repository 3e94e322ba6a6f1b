#include "host/match/Support.h"

#include <rapidcheck/gtest.h>

#include "match/ClipLog.h"
#include "match/LogIndex.h"
#include "output/CsvReader.h"

namespace zonstory {
namespace {

using namespace std::string_literals;

std::string Wide(const std::string& ascii, bool bigEndian) {
    std::string wide;
    for (const char c : ascii) {
        wide += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return wide;
}

struct LogCase {
    const char* name;
    std::string bytes;
    std::size_t line = 2; ///< Of the row.
};
void PrintTo(const LogCase& c, std::ostream* os) {
    *os << c.name;
}

class Logs : public ::testing::TestWithParam<LogCase> {};

// Every one says that a.mov is scene 12A, take 3.
TEST_P(Logs, AreReadHoweverTheyWereSaved) {
    const ClipLog log = ReadClipLog(GetParam().bytes, "day.log");
    ASSERT_EQ(log.rows.size(), 1u);
    const ClipLog::Row& row = log.rows.front();
    const std::string_view file = log.Field(row, log.known.file);
    EXPECT_EQ(file.empty() ? log.Field(row, log.known.clip) : file, "a.mov");
    EXPECT_EQ(log.Field(row, log.known.scene), "12A");
    EXPECT_EQ(log.Field(row, log.known.take), "3");
    EXPECT_EQ(row.line, GetParam().line);
    EXPECT_EQ(log.Where(row), "day.log:" + std::to_string(GetParam().line));
}

INSTANTIATE_TEST_SUITE_P(
    Csv, Logs,
    ::testing::Values(LogCase{"Comma", "Clip,Scene,Take\na.mov,12A,3\n"},
                      LogCase{"Semicolon", "Clip Name;Scene Number;Take No.\na.mov;12A;3\n"},
                      LogCase{"Tab", "FILE NAME\tscene\tTAKE #\r\na.mov\t12A\t3\r\n"},
                      LogCase{"Bar", "Take|Sc|Source File\n3|12A|a.mov\n"},
                      LogCase{"OldMac", "Clip,Scene,Take\ra.mov,12A,3\r"},
                      LogCase{"Quoted", "\"Clip\",\"Scene\",\"Take\"\n\"a.mov\",\" 12A\",\"3\"\n"},
                      LogCase{"LineFeedInField",
                              "Notes,Clip,Scene,Take\n\"two\nlines, and a \"\"quote\"\"\",a.mov,12A,3\n"},
                      LogCase{"UnknownColumns", "Lens,Clip,T-Stop,Scene,Circled,Take\n50mm,a.mov,2.8,12A,x,3\n"},
                      LogCase{"HeadingLines", "Production: Willow, day 3\n\nClip,Scene,Take\na.mov,12A,3\n", 4},
                      LogCase{"EmptyRows", "Clip,Scene,Take\n\n,,\na.mov,12A,3\n", 4},
                      LogCase{"UTF8Mark", "\xEF\xBB\xBF"
                                          "Clip,Scene,Take\na.mov,12A,3"},
                      LogCase{"LittleEndianMark", "\xFF\xFE" + Wide("Clip,Scene,Take\na.mov,12A,3\n", false)},
                      LogCase{"BigEndianMark", "\xFE\xFF" + Wide("Clip,Scene,Take\na.mov,12A,3\n", true)},
                      LogCase{"LittleEndian", Wide("Clip,Scene,Take\na.mov,12A,3\n", false)},
                      LogCase{"BigEndian", Wide("Clip,Scene,Take\na.mov,12A,3\n", true)},
                      LogCase{"Windows", "Clip,Scene,Take,Ort\na.mov,12A,3,Caf\xE9 \x96 au\xDF"
                                         "en\n"}),
    [](const auto& one) { return one.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Ale, Logs,
    ::testing::Values(
        LogCase{"CrLf",
                "Heading\r\nFIELD_DELIM\tTABS\r\n\r\nColumn\r\nName\tScene\tTake\tTape\tStart\tEnd\tSource File\r\n\r\n"
                "Data\r\nx\t12A\t3\tA007\t01:00:00:00\t01:00:10:00\ta.mov\r\n",
                8},
        LogCase{"Cr", "Heading\rColumn\rName\tTake\tScene\rData\ra.mov\t3\t12A\r", 5},
        LogCase{"Lf", "Heading\nVIDEO_FORMAT\t1080\nColumn\nName\tTake\tScene\nData\na.mov\t3\t12A\t\n", 6}),
    [](const auto& one) { return one.param.name; });

TEST(LogErrors, NameTheLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "day.log:1: no header"},
        {"Lens,Notes\n50,x\n", "day.log:1: no header"},
        {"Clip,Notes\na,x\n", "day.log:1: no header"},
        {"Clip,Scene\na.mov,12\n\"b.mov,13\n", "day.log:3: a quote"},
        {"Heading\n\nFIELD_DELIM\tTABS\n", "day.log:3: no Column section"},
        {"Heading\nColumn\nName\tScene\n", "day.log:3: no Data section"},
        {"Heading\nColumn\nName\tTape\nData\na\tb\n", "day.log: has no scene column"},
    };
    for (const auto& [bytes, message] : cases) {
        try {
            ReadClipLog(bytes, "day.log");
            ADD_FAILURE() << bytes;
        } catch (const CsvError& error) {
            EXPECT_EQ(std::string(error.what()).substr(0, message.size()), message) << error.what();
        }
    }
}

// ---- Which row speaks of which clip -----------------------------------------------------------------------------------

struct RowCase {
    const char* name;
    const char* log;
    std::vector<std::string> clips;
    std::vector<std::string> scenes; ///< What the log says of each; empty for nothing.
    std::size_t problems = 0;
    SlateStyle style = SlateStyle::Scene;
};
void PrintTo(const RowCase& c, std::ostream* os) {
    *os << c.name;
}

class LogRows : public ::testing::TestWithParam<RowCase> {};

TEST_P(LogRows, FindTheirClips) {
    const RowCase& c = GetParam();
    const std::vector<ClipLog> logs = {ReadClipLog(c.log, "day.log")};
    const LogIndex index(logs, c.clips, c.style);
    for (std::size_t clip = 0; clip < c.clips.size(); ++clip) {
        std::string said;
        for (const Statement& statement : index.Statements(clip)) {
            said += (said.empty() ? "" : " ") + statement.text;
        }
        EXPECT_EQ(said, c.scenes[clip]) << c.clips[clip];
    }
    EXPECT_EQ(index.Problems().size(), c.problems);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, LogRows,
    ::testing::Values(
        RowCase{"FileName", "Clip,Scene\nA.MOV,12\n", {"/x/a.mov", "/x/b.mov"}, {"12", ""}},
        RowCase{"Stem", "Clip,Scene\na,12\n", {"/x/a.mov"}, {"12"}},
        RowCase{"OtherExtension", "Clip,Scene\na.mov,12\n", {"/x/a.mxf"}, {"12"}},
        RowCase{"NameBeatsStem", "Clip,Scene\na,12\na.mov,13\n", {"/x/a.mov"}, {"13"}},
        RowCase{"TwoRowsOfOneClip", "Clip,Scene\na.mov,12\na.mov,13\n", {"/x/a.mov"}, {"12 13"}},
        RowCase{"StemOfTwo", "Clip,Scene\na,12\n", {"/x/a.mov", "/x/a.wav"}, {"", ""}, 1},
        RowCase{"NameInTwoFolders", "Clip,Scene\na.mov,12\n", {"/x/a.mov", "/y/a.mov"}, {"", ""}, 1},
        RowCase{
            "PathTellsFolders", "Source File,Scene\nD:\\cards\\y\\a.mov,12\n", {"/x/a.mov", "/y/a.mov"}, {"", "12"}},
        RowCase{"DeeperPath",
                "Source File,Scene\n/Volumes/B/CLIP/a.mov,12\n",
                {"/m/A/CLIP/a.mov", "/m/B/CLIP/a.mov"},
                {"", "12"}},
        RowCase{"FileBeatsName", "Name,Source File,Scene\nb,a.mov,12\n", {"/x/a.mov", "/x/b.mov"}, {"12", ""}},
        RowCase{"NameWhereFileIsMissing", "Name,Source File,Scene\nb,,12\n", {"/x/a.mov", "/x/b.mov"}, {"", "12"}},
        RowCase{"SoundToo", "Clip,Sound File,Scene\na.mov,T01.wav,12\n", {"/x/a.mov", "/x/T01.WAV"}, {"12", "12"}},
        RowCase{"Tape", "Name,Tape,Scene\n12-3,A007C006_160424_R28L,12\n", {"/x/A007C006_160424_R28L.mov"}, {"12"}},
        RowCase{"RollAndClip", "Camera Roll,Clip No,Scene\nA007,6,12\n", {"/x/A007C006_160424_R28L.mov"}, {"12"}},
        RowCase{"ShortClipName", "Clip,Scene\nA007C006,12\n", {"/x/A007C006_160424_R28L.mov"}, {"12"}},
        RowCase{"NoScene", "Clip,Scene\na.mov,\n", {"/x/a.mov"}, {""}},
        RowCase{"SlatesAreScenes", "Slate,Take,Scene\n213,4,12\n", {"/x/213-4.mov"}, {""}},
        RowCase{"ContinuousSlates",
                "Slate,Take,Scene\n213,4,12\n213,5,13\n0214,1,14\n",
                {"/x/213-4.mov", "/x/213.mov", "/x/214_T1.mov", "/x/213-9.mov"},
                {"12", "12 13", "14", ""},
                0,
                SlateStyle::Continuous}),
    [](const auto& one) { return one.param.name; });

TEST(LogRows, OfAnotherFolderAreLessSure) {
    const std::vector<ClipLog> logs = {ReadClipLog("Source File,Scene,Take\nB001/C0001.MP4,12,007\n", "day.log")};
    const auto confidence = [&](const std::string& clip) {
        const std::vector<std::string> clips = {clip};
        const SceneNumbers story({"12"});
        return Decide(LogIndex(logs, clips, SlateStyle::Scene).Statements(0), story, Confidence::Low).evidence.value();
    };
    EXPECT_EQ(confidence("/m/B001/C0001.MP4").confidence, Confidence::Certain);
    EXPECT_EQ(confidence("/m/A001/C0001.MP4").confidence, Confidence::Medium);
    EXPECT_EQ(confidence("/m/B001/C0001.MP4").take, "7");
}

RC_GTEST_PROP(LogProperties, ArbitraryBytesAreTakenOrRefused, ()) {
    const std::string header = *rc::gen::element<std::string>(
        "", "Clip,Scene\n", "Heading\nColumn\nName\tScene\nData\n", "\xFF\xFE", "sep=;\nClip;Scene\n");
    const auto piece = rc::gen::oneOf(
        rc::gen::element<std::string>("\"", ",", "\n", "\r", "\t", "a.mov", "12", "\0"s, "Scene", "Clip", "/", "\\"),
        rc::gen::arbitrary<std::string>());
    std::string bytes = header;
    for (const std::string& part : *rc::gen::container<std::vector<std::string>>(piece)) {
        bytes += part;
    }
    try {
        const std::vector<ClipLog> logs = {ReadClipLog(bytes, "x")};
        const std::vector<std::string> clips = {"/m/a.mov", "/n/a.mov", bytes};
        for (const SlateStyle style : {SlateStyle::Scene, SlateStyle::Continuous}) {
            RC_ASSERT(LogIndex(logs, clips, style).Statements(0).size() <= logs.front().rows.size());
        }
    } catch (const CsvError& error) {
        RC_ASSERT(std::string(error.what()).substr(0, 2) == "x:");
    }
}

} // namespace
} // namespace zonstory

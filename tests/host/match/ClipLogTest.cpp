#include <sstream>

#include "host/match/Support.h"

#include "match/ClipLog.h"
#include "match/LogIndex.h"
#include "output/CsvReader.h"
#include "support/MessageOf.h"
#include "support/Utf16.h"

namespace zonstory {
namespace {

struct LogCase {
    std::string bytes;
    std::size_t line = 2; ///< Of the row.
};

// Every one says that a.mov is scene 12A, take 3.
TEST(Logs, AreReadHoweverTheyWereSaved) {
    const std::string plain = "Clip,Scene,Take\na.mov,12A,3\n";
    const LogCase cases[] = {
        {plain},
        {"Clip Name;Scene Number;Take No.\na.mov;12A;3\n"},
        {"FILE NAME\tscene\tTAKE #\r\na.mov\t12A\t3\r\n"},
        {"Take|Sc|Source File\n3|12A|a.mov\n"},
        {"Datei;Szene;Take\na.mov;12A;3\n"},
        {"Nom du fichier;Scène n°;Prise\na.mov;12A;3\n"},
        {"Archivo;Escena;Toma\na.mov;12A;3\n"},
        {"Nome file;Scena;Ciak\na.mov;12A;3\n"},
        {"Clip,Scene,Take\ra.mov,12A,3\r"},
        {"\"Clip\",\"Scene\",\"Take\"\n\"a.mov\",\" 12A\",\"3\"\n"},
        {"Notes,Clip,Scene,Take\n\"two\nlines, and a \"\"quote\"\"\",a.mov,12A,3\n"},
        {"Lens,Clip,T-Stop,Scene,Circled,Take\n50mm,a.mov,2.8,12A,x,3\n"},
        {"Production: Willow, day 3\n\n" + plain, 4},
        {"Clip,Scene,Take\n\n,,\na.mov,12A,3\n", 4},
        {support::InUTF16(plain, true)},
        {"Clip,Scene,Take,Ort\na.mov,12A,3,Caf\xE9 \x96 au\xDF\n"},
        {"Heading\r\nFIELD_DELIM\tTABS\r\n\r\nColumn\r\nName\tScene\tTake\tTape\tStart\tSource File\r\n\r\n"
         "Data\r\nx\t12A\t3\tA007\t01:00:00:00\ta.mov\r\n",
         8},
        {"Heading\rColumn\rName\tTake\tScene\rData\ra.mov\t3\t12A\r", 5},
        {"Heading\nVIDEO_FORMAT\t1080\nColumn\nName\tTake\tScene\nData\na.mov\t3\t12A\t\n", 6}};
    for (const LogCase& c : cases) {
        const ClipLog log = ReadClipLog(c.bytes, "day.log");
        ASSERT_EQ(log.rows.size(), 1u) << c.bytes;
        const ClipLog::Row& row = log.rows.front();
        EXPECT_EQ(log.Field(row, log.known.file ? log.known.file : log.known.clip), "a.mov") << c.bytes;
        EXPECT_EQ(log.Field(row, log.known.scene), "12A") << c.bytes;
        EXPECT_EQ(log.Field(row, log.known.take), "3") << c.bytes;
        EXPECT_EQ(log.Where(row), "day.log:" + std::to_string(c.line)) << c.bytes;
    }
}

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
    for (const auto& c : cases) {
        EXPECT_THAT(support::MessageOf<CsvError>([&] { ReadClipLog(c.first, "day.log"); }),
                    testing::StartsWith(c.second));
    }
}

// A log, its lines parted by ";"; the clips, each with the scenes that the log says of it; "!" for a row that is told of.
constexpr char kRows[] = R"(
Clip,Scene;A.MOV,12 = /x/a.mov:12 /x/b.mov:
Clip,Scene;a,12 = /x/a.mov:12
Clip,Scene;a.mov,12 = /x/a.mxf:12
Clip,Scene;a,12;a.mov,13 = /x/a.mov:13
Clip,Scene;a.mov,12;a.mov,13 = /x/a.mov:12+13
Clip,Scene;a,12 = /x/a.mov: /x/a.wav: !
Clip,Scene;a.mov,12 = /x/a.mov: /y/a.mov: !
Source File,Scene;D:\cards\y\a.mov,12 = /x/a.mov: /y/a.mov:12
Source File,Scene;/Volumes/B/CLIP/a.mov,12 = /m/A/CLIP/a.mov: /m/B/CLIP/a.mov:12
Name,Source File,Scene;b,a.mov,12 = /x/a.mov:12 /x/b.mov:
Name,Source File,Scene;b,,12 = /x/a.mov: /x/b.mov:12
Clip,Sound File,Scene;a.mov,T01.wav,12 = /x/a.mov:12 /x/T01.WAV:12
Name,Tape,Scene;12-3,A007C006_160424_R28L,12 = /x/A007C006_160424_R28L.mov:12
Camera Roll,Clip No,Scene;A007,6,12 = /x/A007C006_160424_R28L.mov:12
Clip,Scene;A007C006,12 = /x/A007C006_160424_R28L.mov:12
Clip,Scene;A007C006_160424_R28L,12 = /x/A007C006.mov:12
Clip,Scene;a.mov, = /x/a.mov:
Slate,Take,Scene;213,4,12 = /x/213-4.mov:
continuous Slate,Take,Scene;213,4,12;213,5,13;0214,1,14 = /x/213-4.mov:12 /x/213.mov:12+13 /x/214_T1.mov:14 /x/213-9.mov:
)";

TEST(LogRows, FindTheirClips) {
    for (auto [log, told] : test::Rows(kRows)) {
        const bool continuous = log.starts_with("continuous ");
        std::replace(log.begin(), log.end(), ';', '\n');
        const std::vector<ClipLog> logs = {ReadClipLog(log.substr(continuous ? 11 : 0), "day.log")};
        std::vector<std::string> clips;
        std::istringstream words(told);
        for (std::string clip; words >> clip && clip != "!";) {
            clips.push_back(clip.substr(0, clip.find(':')));
        }
        const LogIndex index(logs, clips, continuous ? SlateStyle::Continuous : SlateStyle::Scene);
        std::string found;
        for (std::size_t clip = 0; clip < clips.size(); ++clip) {
            found += (clip == 0 ? "" : " ") + clips[clip];
            for (const char* sign = ":"; const Statement& statement : index.Statements(clip)) {
                found += std::exchange(sign, "+") + statement.text;
            }
            found += index.Statements(clip).empty() ? ":" : "";
        }
        EXPECT_EQ(found + (index.Problems().empty() ? "" : " !"), told) << log;
    }
}

TEST(LogRows, OfAnotherFolderAreLessSure) {
    const std::vector<ClipLog> logs = {ReadClipLog("Source File,Scene\nB001/C0001.MP4,12\n", "day.log")};
    for (const auto& [clip, sureness] : test::Rows("/m/B001/C0001.MP4 = certain | /m/A001/C0001.MP4 = medium")) {
        EXPECT_EQ(Name(LogIndex(logs, {&clip, 1}, SlateStyle::Scene).Statements(0).at(0).ceiling), sureness) << clip;
    }
}

} // namespace
} // namespace zonstory

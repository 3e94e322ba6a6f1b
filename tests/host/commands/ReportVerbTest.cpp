#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleStory.h"
#include "Zonstory.h"
#include "host/clip/ClipSamples.h"

// What leaves the program as a file to look at: the page, and spreadsheets.
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class ReportVerb : public ::testing::Test {
protected:
    ReportVerb() {
        support::WriteFile(mZonstory / "s.skrx", support::kSampleStory);
        fs::create_directories(mZonstory / "pages");
    }

    // A part of a spreadsheet, unpacked by a program of others.
    std::string InSheet(const std::string& file, const std::string& part) const {
        return support::RunProgram({"perl", "-MIO::Uncompress::Unzip=unzip", "-e",
                                    "unzip $ARGV[0] => '-', Name => $ARGV[1] or die", mZonstory / file, part})
            .output;
    }

    Zonstory mZonstory;
};

TEST_F(ReportVerb, LinksClipsThatLieNearAndNamesTheOthers) {
    fs::create_directories(mZonstory / "far/rushes");
    const fs::path made = support::MakeClip(mZonstory.Folder(), support::SampleNamed("MovIndexAtEnd"));
    for (const char* const name : {"pages/1B-2.mov", "near #1.mov", "far/rushes/1-3.mov", "far/rushes/x.mov"}) {
        fs::copy_file(made, mZonstory / name);
    }
    mZonstory.Run({"write", "s.skrx", "--scene", "1", "pages/1B-2.mov", "near #1.mov", "far/rushes/1-3.mov"});
    const ZonstoryResult result =
        mZonstory.Run({"report", "s.skrx", "pages", "near #1.mov", "far/rushes", "-o", "pages/deep/../r.html"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const std::string page = support::ReadFile(mZonstory / "pages/r.html");
    EXPECT_THAT(page, AllOf(HasSubstr("href=\"1B-2.mov\""), HasSubstr(">B-2</span> <span class=\"name\">1B-2.mov<"),
                            HasSubstr("href=\"../near%20%231.mov\""), HasSubstr("<b>1</b> scenes shown"),
                            HasSubstr("<b>5</b> scenes without a clip"), HasSubstr("<b>1</b> clips without a scene"),
                            Not(HasSubstr(mZonstory.Folder().parent_path().string()))));
    support::WriteFile(mZonstory / "mine.html", "{{title}}: {{#script}}{{label}}{{#isBare}}!{{/isBare}} {{/script}}");
    EXPECT_EQ(mZonstory.Run({"report", "s.skrx", "pages", "--template", "mine.html", "-o", "-"}).out,
              "s.skrx: 1 12A/B! 12A:B! #4! 2! 2! ");
}

TEST_F(ReportVerb, TakesThePlaceOfNothingItReads) {
    support::WriteFile(mZonstory / "open.html", "{{#title}}");
    const fs::path clip = support::MakeClip(mZonstory.Folder(), support::SampleNamed("MovIndexAtEnd"));
    const std::string before = support::ReadFile(clip);
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"report", "s.skrx", "-o", "s.skrx"},
                                               {"report", "s.skrx", "-o", clip},
                                               {"scenes", "s.skrx", "-o", "new.mov"},
                                               {"coverage", "s.skrx", clip, "-o", clip},
                                               {"characters", "s.skrx", "-o", "./s.skrx"},
                                               {"report", "s.skrx", "--template", "open.html", "-o", "open.html"},
                                               {"report", "s.skrx", "--template", "open.html", "-o", "r.html"},
                                               {"report", "s.skrx", "--template", "none.html", "-o", "r.html"}}) {
        const ZonstoryResult result = mZonstory.Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments.back() << result.err;
        EXPECT_NE(result.err, "");
    }
    EXPECT_EQ(support::ReadFile(mZonstory / "s.skrx"), support::kSampleStory);
    EXPECT_EQ(support::ReadFile(clip), before);
    EXPECT_FALSE(fs::exists(mZonstory / "r.html") || fs::exists(mZonstory / "new.mov"));
}

TEST_F(ReportVerb, WhatNoReaderCouldUseIsRefused) {
    std::string script;
    for (int scene = 0; scene <= 20'000; ++scene) {
        script += "INT. A\n\nP" + std::to_string(scene) + "\nNo.\n\n";
    }
    support::WriteFile(mZonstory / "long.fountain", script);
    EXPECT_THAT(mZonstory.Run({"report", "long.fountain", "-o", "-"}).err, HasSubstr("20001 scenes"));
    EXPECT_THAT(mZonstory.Run({"characters", "long.fountain", "--by-scene"}).err, HasSubstr("too large"));
}

TEST_F(ReportVerb, EndingsDecideWhatAFileHolds) {
    EXPECT_EQ(mZonstory.Run({"scenes", "s.skrx", "-o", "t.csv"}).out, "t.csv\n");
    EXPECT_EQ(support::ReadFile(mZonstory / "t.csv"), mZonstory.Run({"scenes", "s.skrx", "--format", "csv"}).out);
    mZonstory.Run({"scenes", "s.skrx", "-o", "t", "--format", "json"});
    EXPECT_EQ(support::ReadFile(mZonstory / "t"), mZonstory.Run({"scenes", "s.skrx", "--format", "json"}).out);

    ASSERT_EQ(mZonstory.Run({"scenes", "s.skrx", "-o", "t.XLSX"}).exitCode, 0);
    const std::string sheet = InSheet("t.XLSX", "xl/worksheets/sheet1.xml");
    EXPECT_THAT(sheet, AllOf(HasSubstr("<c r=\"A2\"><v>1</v></c>"), HasSubstr("<c r=\"B2\" t=\"s\">"),
                             HasSubstr("<c r=\"H2\"><v>3</v></c>"), HasSubstr("state=\"frozen\"")))
        << "numbers are numbers, a scene's number is none";
    EXPECT_THAT(InSheet("t.XLSX", "xl/sharedStrings.xml"), AllOf(HasSubstr(">Time of day<"), HasSubstr(">KÜCHE<")));
    ASSERT_EQ(mZonstory.Run({"characters", "s.skrx", "--by-scene", "-o", "who.xlsx"}).exitCode, 0);
    EXPECT_THAT(InSheet("who.xlsx", "xl/sharedStrings.xml"), HasSubstr(">小明<"));
}

TEST_F(ReportVerb, LastPagesFollowFromPagesAndLengths) {
    const std::tuple<const char*, const char*, json> scenes[] = {
        // page, length, last page
        {"1", "5/8", 1},     {"1", "2/8", 1},        {"1", "4/8", 2}, // from the last eighth of page 1
        {"2", "3 2/8", 4},                                            // and not 5: the next begins on 4
        {"4", "1/8", 4},     {"9", "1", 9},                           // from the top, as pages between are not told
        {"10", "", nullptr}, {"A10", "2/8", nullptr}};
    std::string script;
    for (const auto& [page, length, last] : scenes) {
        script += std::string("<Paragraph Type='Scene Heading'><SceneProperties Page='") + page + "' Length='" +
                  length + "'/><Text>INT. A</Text></Paragraph>";
    }
    support::WriteFile(mZonstory / "s.fdx", "<FinalDraft><Content>" + script + "</Content></FinalDraft>");
    const json told = json::parse(mZonstory.Run({"scenes", "s.fdx", "--format", "json"}).out)["scenes"];
    for (std::size_t at = 0; at < std::size(scenes); ++at) {
        EXPECT_EQ(told[at].value("lastPage", json()), std::get<2>(scenes[at])) << at;
    }
}

TEST_F(ReportVerb, SpeakersStandAcrossScenes) {
    EXPECT_EQ(mZonstory.Run({"characters", "s.skrx", "--by-scene", "--format", "csv"}).out,
              "position,number,ANN,小明\r\n1,1,1,1\r\n2,12A/B,,\r\n3,12A:B,,\r\n4,,2,\r\n5,2,,\r\n6,2,,\r\n");
    const json document = json::parse(mZonstory.Run({"characters", "s.skrx", "--by-scene", "--format", "json"}).out);
    EXPECT_EQ(document["characters"], (json{"ANN", "小明"}));
    EXPECT_EQ(document["scenes"][0], (json{{"position", 1}, {"number", "1"}, {"lines", {1, 1}}}));
    EXPECT_EQ(document["scenes"][5]["lines"], (json{0, 0}));
}

} // namespace

#include <ostream>

#include <gmock/gmock.h>

#include "SampleStory.h"
#include "Zonstory.h"

namespace {

using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct EndCase {
    const char* name;
    std::vector<std::string> arguments;
    int exitCode;
    const char* error; ///< A part of what standard error says.
};
void PrintTo(const EndCase& c, std::ostream* stream) {
    *stream << c.name;
}
class ProgramEnd : public ::testing::TestWithParam<EndCase> {};

TEST_P(ProgramEnd, HasItsCodeAndOneClearLine) {
    const Zonstory zonstory;
    support::WriteFile(zonstory / "s.skrx", support::kSampleStory);
    support::WriteFile(zonstory / "bad.skrx", "<Talewright version='1.0'>\n <a></b>");
    support::WriteFile(zonstory / "html.skrx", "<html/>");
    support::WriteFile(zonstory / "text.mov", "no clip");
    support::WriteFile(zonstory / "nocolumn.csv", "clip,take\na.mov,1\n");
    support::WriteFile(zonstory / "twice.csv", "clip,scene\ntext.mov,1\n./text.mov,12A/B\n");
    support::WriteFile(zonstory / "wrong.csv", "clip,scene\ntext.mov,1\ntext.mov,99\n,\nb.mov,2\n");
    const ZonstoryResult result = zonstory.Run(GetParam().arguments);
    EXPECT_EQ(result.exitCode, GetParam().exitCode);
    EXPECT_THAT(result.err, HasSubstr(GetParam().error));
    EXPECT_EQ(result.err.empty(), std::string_view(GetParam().error).empty());
}

INSTANTIATE_TEST_SUITE_P(
    Done, ProgramEnd,
    ::testing::Values(EndCase{"Help", {"--help"}, 0, ""}, EndCase{"VerbHelp", {"write", "--help"}, 0, ""},
                      EndCase{"Version", {"--version"}, 0, ""},
                      EndCase{"OptionBeforeVerb", {"-q", "check", "s.skrx"}, 0, ""},
                      EndCase{"OptionBehindVerb", {"check", "s.skrx", "--quiet", "--no-color"}, 0, ""}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    SomeFailed, ProgramEnd,
    ::testing::Values(EndCase{"NoSuchClip", {"show", "none.mov"}, 1, "none.mov: No such file or directory\n"},
                      EndCase{"WriteToNoSuchClip", {"write", "s.skrx", "--scene", "1", "none.mov"}, 1, "none.mov: "},
                      EndCase{"ReportInNoFolder",
                              {"clear", "none.mov", "--report", "none/r.csv"},
                              1,
                              "none/r.csv: cannot be written: No such file or directory\n"},
                      EndCase{"PacketsInAFile", {"packets", "s.skrx", "-o", "s.skrx"}, 1, "s.skrx: "}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Usage, ProgramEnd,
    ::testing::Values(
        EndCase{"NoVerb", {}, 2, "zonstory: "}, EndCase{"UnknownVerb", {"wirte"}, 2, "zonstory: "},
        EndCase{"UnknownOption", {"info", "s.skrx", "--nope"}, 2, "--nope"},
        EndCase{"NoStory", {"info"}, 2, "STORY is required"},
        EndCase{"UnknownFormat", {"info", "s.skrx", "--format", "xml"}, 2, "xml not in {text,json,csv}"},
        EndCase{"NeitherSceneNorMap", {"write", "s.skrx", "text.mov"}, 2, "write needs --scene SCENE CLIP..."},
        EndCase{"SceneAndMap", {"write", "s.skrx", "--scene", "1", "--map", "m.csv"}, 2, "--map"},
        EndCase{"SceneWithoutClip", {"write", "s.skrx", "--scene", "1"}, 2, "a CLIP"},
        EndCase{"MapWithClip", {"write", "s.skrx", "--map", "m.csv", "text.mov"}, 2, "from the map alone"},
        EndCase{"ReportOfUnknownKind", {"clear", "text.mov", "--report", "r.txt"}, 2, ".json or .csv"},
        EndCase{"NoSuchMap", {"write", "s.skrx", "--map", "none.csv"}, 2, "none.csv: No such file"},
        EndCase{"MapWithoutColumn",
                {"write", "s.skrx", "--map", "nocolumn.csv"},
                2,
                "nocolumn.csv:1: no column is named 'scene'\n"},
        EndCase{"MapContradictsItself",
                {"write", "s.skrx", "--map", "twice.csv"},
                2,
                "twice.csv:3: ./text.mov has another scene in line 2\n"}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Story, ProgramEnd,
    ::testing::Values(
        EndCase{"Missing", {"info", "none.skrx"}, 3, "none.skrx: No such file or directory\n"},
        EndCase{"Folder", {"info", "."}, 3, ".: Is a directory\n"},
        EndCase{"Malformed", {"scenes", "bad.skrx"}, 3, "bad.skrx:2:7: not well-formed XML: mismatched tag\n"},
        EndCase{"NoStory", {"dump", "html.skrx"}, 3, "html.skrx:1:1: no story"},
        EndCase{"BeforeClips", {"write", "bad.skrx", "--scene", "1", "none.mov"}, 3, "bad.skrx:2:7: "}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Scene, ProgramEnd,
    ::testing::Values(
        EndCase{"Unknown", {"packets", "s.skrx", "--scene", "99", "-o", "-"}, 4, "no scene '99' among"},
        EndCase{"Ambiguous", {"write", "s.skrx", "--scene", "2", "text.mov"}, 4, "scene '2' is ambiguous: #5, #6\n"},
        EndCase{"InMap",
                {"write", "s.skrx", "--map", "wrong.csv"},
                4,
                "wrong.csv:3: no scene '99' among the story's 6 scenes\n"
                "wrong.csv:5: scene '2' is ambiguous: #5, #6\n"}),
    [](const auto& row) { return row.param.name; });

TEST(Program, HelpShowsEveryVerbWithAnExampleAndTheExitCodes) {
    const Zonstory zonstory;
    const std::string help = zonstory.Run({"--help"}).out;
    for (const std::string verb :
         {"info", "scenes", "characters", "check", "packets", "dump", "write", "clear", "show"}) {
        EXPECT_THAT(help, AllOf(HasSubstr("\n  " + verb + ' '), HasSubstr("$ ")));
        EXPECT_THAT(zonstory.Run({verb, "--help"}).out,
                    AllOf(HasSubstr("Usage: zonstory " + verb), HasSubstr("zonstory " + verb + ' ')));
    }
    for (const char* const code : {"\n  0  ", "\n  1  ", "\n  2  ", "\n  3  ", "\n  4  "}) {
        EXPECT_THAT(help, HasSubstr(code));
    }
    EXPECT_EQ(zonstory.Run({"--version"}).out, "zonstory " ZONSTORY_VERSION "\n");
}

TEST(Program, ResultsThatCannotBeWrittenAreAFailure) {
    const Zonstory zonstory;
    support::WriteFile(zonstory / "s.skrx", support::kSampleStory);
    const ZonstoryResult full = zonstory.RunInto("/dev/full", {"scenes", "s.skrx"});
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_EQ(full.err, "standard output: No space left on device\n");
}

TEST(Program, WhatAFileSaysDoesNotReachTheTerminal) {
    const Zonstory zonstory;
    const ZonstoryResult result = zonstory.Run({"info", "a\x1b[2J\nb\xE9"});
    EXPECT_EQ(result.err, "a\\x1b[2J\\nb\\xe9: No such file or directory\n");
}

TEST(Program, ManPageAndCompletionsKnowEveryVerb) {
    for (const std::string name : {"zonstory.1", "zonstory.bash", "_zonstory", "zonstory.fish"}) {
        const std::string text = support::ReadFile(std::filesystem::path(ZONSTORY_DOCS) / name);
        for (const char* const word :
             {"info", "scenes", "characters", "check", "packets", "dump", "write", "clear", "show"}) {
            EXPECT_THAT(text, HasSubstr(word)) << name;
        }
        EXPECT_THAT(text, HasSubstr("no")) << name;
    }
    EXPECT_EQ(std::system(("bash -n " ZONSTORY_DOCS "/zonstory.bash")), 0);
}

} // namespace

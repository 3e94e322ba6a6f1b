#include <gmock/gmock.h>

#include "SampleStory.h"
#include "Zonstory.h"

namespace {

using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::HasSubstr;

struct End {
    std::vector<std::string> arguments;
    int exitCode;
    const char* error; ///< A part of what standard error says; nothing else says nothing.
};

// clang-format off
const End kEnds[] = {
    {{"--help"}, 0, ""},
    {{"-q", "check", "s.skrx"}, 0, ""},
    {{"check", "s.skrx", "--quiet", "--no-color"}, 0, ""},
    {{"show", "none.mov"}, 1, "none.mov: No such file or directory\n"},
    {{"write", "s.skrx", "--scene", "1", "none.mov"}, 1, "none.mov: "},
    {{"clear", "none.mov", "--report", "none/r.csv"}, 1, "none/r.csv: cannot be written: No such file or directory\n"},
    {{"packets", "s.skrx", "-o", "s.skrx"}, 1, "s.skrx: "},
    {{}, 2, "zonstory: "},
    {{"wirte"}, 2, "zonstory: "},
    {{"info", "s.skrx", "--nope"}, 2, "--nope"},
    {{"info"}, 2, "STORY is required"},
    {{"info", "s.skrx", "--format", "xml"}, 2, "xml not in {text,json,csv}"},
    {{"write", "s.skrx", "text.mov"}, 2, "write needs --scene SCENE CLIP..."},
    {{"write", "s.skrx", "--scene", "1", "--map", "m.csv"}, 2, "--map"},
    {{"write", "s.skrx", "--scene", "1"}, 2, "a CLIP"},
    {{"write", "s.skrx", "--map", "m.csv", "text.mov"}, 2, "from the map alone"},
    {{"write", "s.skrx", "--match", "--scene", "1", "c"}, 2, "--match"},
    {{"write", "s.skrx", "--match"}, 2, "CLIP"},
    {{"write", "s.skrx", "--scene", "1", "--log", "nocolumn.csv", "text.mov"}, 2, "--log"},
    {{"clear", "text.mov", "--report", "r.txt"}, 2, ".json or .csv"},
    {{"write", "s.skrx", "--map", "none.csv"}, 2, "none.csv: No such file"},
    {{"write", "s.skrx", "--map", "nocolumn.csv"}, 2, "nocolumn.csv:1: no column is named 'scene'\n"},
    {{"write", "s.skrx", "--map", "twice.csv"}, 2, "twice.csv:3: ./text.mov has another scene in line 2\n"},
    {{"match", "s.skrx"}, 2, "CLIP"},
    {{"match", "s.skrx", "text.mov", "--min-confidence", "sure"}, 2, "--min-confidence"},
    {{"match", "s.skrx", "text.mov", "--slates", "none"}, 2, "--slates"},
    {{"match", "s.skrx", "text.mov", "--log", "missing.csv"}, 2, "missing.csv"},
    {{"match", "s.skrx", "text.mov", "--log", "."}, 2, ".: "},
    {{"match", "s.skrx", "text.mov", "--log", "lens.csv"}, 2, "lens.csv:1: no header"},
    {{"info", "none.skrx"}, 3, "none.skrx: No such file or directory\n"},
    {{"info", "a\x1b[2J\nb\xE9"}, 3, "a\\x1b[2J\\nb\\xe9: No such file or directory\n"},
    {{"info", "."}, 3, ".: Is a directory\n"},
    {{"scenes", "bad.skrx"}, 3, "bad.skrx:2:7: not well-formed XML: mismatched tag\n"},
    {{"dump", "html.skrx"}, 3, "html.skrx:1:1: no story"},
    {{"write", "bad.skrx", "--scene", "1", "none.mov"}, 3, "bad.skrx:2:7: "},
    {{"packets", "s.skrx", "--scene", "99", "-o", "-"}, 4, "no scene '99' among"},
    {{"write", "s.skrx", "--scene", "2", "text.mov"}, 4, "scene '2' is ambiguous: #5, #6\n"},
    {{"write", "s.skrx", "--map", "wrong.csv"}, 4, "wrong.csv:3: no scene '99' among the story's 6 scenes\n"
                                                   "wrong.csv:5: scene '2' is ambiguous: #5, #6\n"},
};
// clang-format on

TEST(Program, EndsWithItsCodeAndOneClearLine) {
    const Zonstory zonstory;
    support::WriteFile(zonstory / "s.skrx", support::kSampleStory);
    support::WriteFile(zonstory / "bad.skrx", "<Talewright version='1.0'>\n <a></b>");
    support::WriteFile(zonstory / "html.skrx", "<html/>");
    support::WriteFile(zonstory / "text.mov", "no clip");
    support::WriteFile(zonstory / "lens.csv", "Lens,Notes\n50,x\n");
    support::WriteFile(zonstory / "nocolumn.csv", "clip,take\na.mov,1\n");
    support::WriteFile(zonstory / "twice.csv", "clip,scene\ntext.mov,1\n./text.mov,12A/B\n");
    support::WriteFile(zonstory / "wrong.csv", "clip,scene\ntext.mov,1\ntext.mov,99\n,\nb.mov,2\n");
    for (const End& end : kEnds) {
        SCOPED_TRACE(::testing::PrintToString(end.arguments));
        const ZonstoryResult result = zonstory.Run(end.arguments);
        EXPECT_EQ(result.exitCode, end.exitCode);
        EXPECT_THAT(result.err, HasSubstr(end.error));
        EXPECT_EQ(result.err.empty(), std::string_view(end.error).empty());
    }
}

TEST(Program, HelpManPageAndCompletionsKnowEveryVerbAndExitCode) {
    const Zonstory zonstory;
    const std::string help = zonstory.Run({"--help"}).out;
    for (const std::string verb :
         {"info", "scenes", "characters", "check", "packets", "dump", "write", "clear", "show", "match", "coverage"}) {
        EXPECT_THAT(help, AllOf(HasSubstr("\n  " + verb + ' '), HasSubstr("$ ")));
        EXPECT_THAT(zonstory.Run({verb, "--help"}).out,
                    AllOf(HasSubstr("Usage: zonstory " + verb), HasSubstr("zonstory " + verb + ' ')));
        for (const std::string name : {"zonstory.1", "zonstory.bash", "_zonstory", "zonstory.fish"}) {
            EXPECT_THAT(support::ReadFile(std::filesystem::path(ZONSTORY_DOCS) / name), HasSubstr(verb)) << name;
        }
    }
    for (const char* const code : {"\n  0  ", "\n  1  ", "\n  2  ", "\n  3  ", "\n  4  "}) {
        EXPECT_THAT(help, HasSubstr(code));
    }
    EXPECT_EQ(zonstory.Run({"--version"}).out, "zonstory " ZONSTORY_VERSION "\n");
    EXPECT_EQ(std::system(("bash -n " ZONSTORY_DOCS "/zonstory.bash")), 0);
}

TEST(Program, ResultsThatCannotBeWrittenAreAFailure) {
    const Zonstory zonstory;
    support::WriteFile(zonstory / "s.skrx", support::kSampleStory);
    const ZonstoryResult full = zonstory.Wait(zonstory.Start({"scenes", "s.skrx"}, "/dev/full"));
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_EQ(full.err, "standard output: No space left on device\n");
}

} // namespace

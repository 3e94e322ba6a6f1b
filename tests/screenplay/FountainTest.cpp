#include <gmock/gmock.h>

#include "screenplay/Compact.h"
#include "screenplay/StoryText.h"

namespace {

using support::Compact;
using zonscreenplay::ReadError;
using zonscreenplay::ReadOptions;
using zonscreenplay::Screenplay;

Screenplay Read(const std::string& text, const ReadOptions& options = {}) {
    return zonscreenplay::ReadScreenplayFromMemory(text, "film.fountain", options);
}

struct Row {
    const char* name;
    const char* text;
    const char* expected;
    friend void PrintTo(const Row& row, std::ostream* os) { *os << row.name; }
};

std::string NameOf(const ::testing::TestParamInfo<Row>& info) {
    return info.param.name;
}

// A text that stands behind a heading of its own, so that it is a screenplay whatever it says.
class Fountain : public ::testing::TestWithParam<Row> {};

TEST_P(Fountain, ReadsAndIsWrittenToReadTheSame) {
    const Screenplay screenplay = Read(std::string(".X\n\n") + GetParam().text);
    EXPECT_EQ(Compact(screenplay), std::string("scene|heading: X") + GetParam().expected);
    const std::string written = WriteFountain(screenplay);
    EXPECT_EQ(Compact(Read(written)), Compact(screenplay)) << written;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Headings, Fountain, ::testing::Values(
    Row{"Words",           "INT. A\n\next B\n\nEst. C\n\nINT/EXT D\n\nEXT/INT. E\n\nint./ext. F\n\nI/E G\n\nE/I. H\n\nI./E. J",
        "|scene|heading: INT. A|scene|heading: ext B|scene|heading: Est. C|scene|heading: INT/EXT D|scene|heading: EXT/INT. E"
        "|scene|heading: int./ext. F|scene|heading: I/E G|scene|heading: E/I. H|scene|heading: I./E. J"},
    Row{"NoWords",         "INTERVIEW\n\nEXTRA\n\nINT",                 "|action: INTERVIEW|action: EXTRA|action: INT"},
    Row{"NothingBehind",   "  INT. A - DAY\nRain.\n",                   "|scene|heading: INT. A - DAY|action: Rain."},
    Row{"NotBehindText",   "Rain.\nINT. A\n\nJO\nINT. B\n",             "|action: Rain./INT. A|cue: JO|dialogue: INT. B"},
    Row{"BehindStructure", "# Act\nINT. A\n===\nINT. B",                "|scene|heading: INT. A|scene|heading: INT. B"},
    Row{"Forced",          ".KITCHEN\n\n.3rd floor\n\n.\u00c9GLISE",    "|scene|heading: KITCHEN|scene|heading: 3rd floor|scene|heading: \u00c9GLISE"},
    Row{"ForcedMark",      ".\\(LATER\\)\n\n.\"\n\n.##\n\n.#7#",        "|scene|heading: (LATER)|action: .\"|scene|scene 7"},
    Row{"DotsAreNone",     "...later\n\n. NOT\n\n.",                    "|action: ...later|action: . NOT|action: ."},
    Row{"Numbers",         "INT. A #12A#\n\nINT. B#I-1-A#\n\n.C #1.#\n\n.D #\u00c41# ",
        "|scene 12A|heading: INT. A|scene I-1-A|heading: INT. B|scene 1.|heading: C|scene \u00c41|heading: D"},
    Row{"OtherNumbers",    ".A #1\\/2\\ b#\n\n.B \\#1\\#\n\n.C #1#2#",  "|scene 1/2 b|heading: A|scene|heading: B #1#|scene 2|heading: C #1"},
    Row{"NoNumbers",       ".A #1 2#\n\n.B #\u263a#\n\n.C #1# D\n\n.E ##", "|scene|heading: A #1 2#|scene|heading: B #\u263a#|scene|heading: C #1# D|scene|heading: E ##"},
    Row{"NotesAround",     "INT. A [[x]] #5# [[y]]\n\n[[z]]\nINT. B",   "|scene 5|heading: INT. A|scene|heading: INT. B"},
    Row{"Emphasis",        "**INT. A - DAY #5#**\n\n.*B*\n\n*INT. C",   "|scene 5|heading: INT. A - DAY|scene|heading: B|action: *INT. C"},
    Row{"LibraryWords",    "INN/AUSS. AUTO\n\nP.D.V. JO\n\nINT\u3002\u75c5\u9662", "|scene|heading: INN/AUSS. AUTO|scene|heading: P.D.V. JO|scene|heading: INT\u3002\u75c5\u9662"},
    Row{"NoLibraryWords",  "INNENHOF\n\nInn. Hof\n\nINN. HOF\nRain.\n\nEST-CE TOI ?", "|action: INNENHOF|action: Inn. Hof|cue: INN. HOF|dialogue: Rain.|action: EST-CE TOI ?"}), NameOf);

INSTANTIATE_TEST_SUITE_P(Speeches, Fountain, ::testing::Values(
    Row{"Plain",            "\t JO \n  Hi.\nYou?\n\nRain.",             "|cue: JO|dialogue: Hi./You?|action: Rain."},
    Row{"Capitals",         "R2D2\na\n\n\u0410\u041d\u041d\u0410\nb\n\nFRAU WEI\u00df\nc", "|cue: R2D2|dialogue: a|cue: \u0410\u041d\u041d\u0410|dialogue: b|cue: FRAU WEI\u00df|dialogue: c"},
    Row{"NoCapitals",       "23 (O.S.)\na\n\n\u30b8\u30e7\u30f3\nb\n\nJo\nc\n\n(JO)\nd", "|action: 23 (O.S.)/a|action: \u30b8\u30e7\u30f3/b|action: Jo/c|action: (JO)/d"},
    Row{"Extensions",       "JO (on the radio)\na\n\nJO (V.O.) (cont'd)\nb", "|cue: JO (on the radio)|dialogue: a|cue: JO (V.O.) (cont'd)|dialogue: b"},
    Row{"NothingSaid",      "JO\n\nJO\n  \nHi.\n\nJO\n===\n",           "|action: JO|action: JO|action: Hi.|action: JO"},
    Row{"NotBehindText",    "Rain.\nJO\nHi.",                           "|action: Rain./JO/Hi."},
    Row{"Forced",           "@McCoy\nHi.\n\n@\u30b8\u30e7\u30f3\nb\n\n@Jo", "|cue: McCoy|dialogue: Hi.|cue: \u30b8\u30e7\u30f3|dialogue: b|cue: Jo"},
    Row{"ForcedTo",         "@GO TO:\nHi.\n\n@INT. JO\nb",              "|cue: GO TO:|dialogue: Hi.|cue: INT. JO|dialogue: b"},
    Row{"Beside",           "JO [[who?]]\n[[sad]]\nHi.\n\n/* x */ BO /* y */\n[[z]]a\n", "|cue: JO|dialogue: Hi.|cue: BO|dialogue: a"},
    Row{"Dual",             "JO\na\n\nBO^\nb\n\nCY ^ (V.O.)\nc\n\nDI \\^\nd", "|cue: JO|dialogue: a|cue: BO|dialogue: b|cue: CY (V.O.)|dialogue: c|cue: DI ^|dialogue: d"},
    Row{"Parentheticals",   "JO\n (low)\nHi.\n(a) and (b)\n\uff08c\uff09\n\\(d)\n", "|cue: JO|parenthetical: (low)|dialogue: Hi./(a) and (b)|parenthetical: \uff08c\uff09|dialogue: (d)"},
    Row{"TwoBlanks",        "JO\nTen.\n  \nFour.\n \nRain.",            "|cue: JO|dialogue: Ten.//Four.|action: Rain."},
    Row{"TwoBlanksAtEnds",  "JO\n(low)\n  \nTen.\n\t \n\nRain.",        "|cue: JO|parenthetical: (low)|dialogue: Ten.|action: Rain."},
    Row{"Lyrics",           "JO\nla\n~ li\n~(lo)\n\n~lu\nRain.",        "|cue: JO|dialogue: la/li/(lo)|action: lu/Rain."},
    Row{"MarksAreText",     "JO\n#a\n=b\n>c\n!d\n@e\n.f\n===\ng",       "|cue: JO|dialogue: #a/=b/>c/!d/@e/.f/g"}), NameOf);

INSTANTIATE_TEST_SUITE_P(Action, Fountain, ::testing::Values(
    Row{"Lines",          "  Rain. \n\tMore.\nJO\n\n\n \nSnow.",        "|action:   Rain./\tMore./JO|action: Snow."},
    Row{"Forced",         "!INT. A\n!JO\nHi.\n\n!CUT TO:\n\n! > x\n!\n!\n!y", "|action: INT. A/JO/Hi.|action: CUT TO:|action:  > x///y"},
    Row{"Transitions",    "CUT TO:\n\n  GO TO:\nRain.\n\n> CUT TO:\n\n>Fade\nSnow.", "|transition: CUT TO:|transition: GO TO:|action: Rain.|transition: CUT TO:|transition: Fade|action: Snow."},
    Row{"NoTransitions",  "CUT TO: \n\nCut TO:\n\nRain.\nCUT TO:",      "|action: CUT TO:|action: Cut TO:|action: Rain./CUT TO:"},
    Row{"TransitionNote", "CUT TO: [[x]]\n\n> a \\<",                   "|transition: CUT TO:|transition: a <"},
    Row{"Centred",        ">  THE END\t<  \n> by <\nRain.\n> b <",      "|action: THE END/by/Rain./b"},
    Row{"Structure",      "# Act\n= What\n===\n  ====\nRain.\n## B\nSnow.\n\n==", "|action: Rain.|action: Snow."},
    Row{"Wide",           "a\u2028b\u0085c",                            "|action: a\u2028b\u0085c"}), NameOf);

INSTANTIATE_TEST_SUITE_P(Hidden, Fountain, ::testing::Values(
    Row{"Notes",          "a [[x]]b[[y]] c\n[[z]]\nd\n\n[[e]]\n\nf",    "|action: a b c/d|action: f"},
    Row{"NotesOverLines", "a [[x\ny\n  \nz]]b\n\nc [[x\n\ny]]",         "|action: a b|action: c [[x|action: y]]"},
    Row{"EscapedNotes",   "[\\[a]]\n\nb /\\* c \\*/",                   "|action: [[a]]|action: b /* c */"},
    Row{"Boneyards",      "CUT TO:\n/*\nINT. A\n\nx\n*/\nINT. B /* y */\nRain./*z\n*/\n/* */ \nSnow.", "|transition: CUT TO:|scene|heading: INT. B|action: Rain.|action: Snow."},
    Row{"NestedBoneyard", "a/* x /* y */ z */b",                        "|action: ab"},
    Row{"HalfNested",     "a/* x /* y */b/* z */c",                     "|action: abc"},
    Row{"OpenBoneyard",   "a /* b\n\nc [[ d",                           "|action: a /* b|action: c [[ d"},
    Row{"BoneyardInNote", "a[[x/* ]] \n\n*/y]]b",                       "|action: ab"},
    Row{"EndsSpeech",     "JO\nHi.\n /* x */ \nYou?\n\nJO\nHi.\n[[x]]\nYou?", "|cue: JO|dialogue: Hi.|action: You?|cue: JO|dialogue: Hi./You?"}), NameOf);

INSTANTIATE_TEST_SUITE_P(Emphasis, Fountain, ::testing::Values(
    Row{"Plain",     "*a* **b** ***c*** _d_ _*e*_ x*y*z",               "|action: a b c d e xyz"},
    Row{"Spaced",    "He dialed *69 and then *23, or 5 * 3 * 2, _a _",  "|action: He dialed *69 and then *23, or 5 * 3 * 2, _a _"},
    Row{"Closed",    "He dialed *69 and then 23*, and ***69 then 23***", "|action: He dialed 69 and then 23, and 69 then 23"},
    Row{"Escaped",   "**\\*9765\\*** *a\\* \\_b_ \\\\ \\n \\",          "|action: *9765* *a* _b_ \\ \\n \\"},
    Row{"OneLine",   "*a\nb*",                                          "|action: *a/b*"},
    Row{"Words",     "a_file_name (_b_)",                               "|action: a_file_name (b)"},
    Row{"Nested",    "_the *red* one_ ***a** b* **a *b***",             "|action: the red one a b a b"},
    Row{"Overlap",   "_**both_** *a _b* c_",                            "|action: both a b c"},
    Row{"Everywhere", "JO\n(*low*)\n**Hi.**\n\n> *CUT*\n\n>**END**<",   "|cue: JO|parenthetical: (low)|dialogue: Hi.|transition: CUT|action: END"}), NameOf);
// clang-format on

TEST(FountainText, BeginsWithATitlePageOrWithout) {
    const Screenplay screenplay = Read("\xEF\xBB\xBF[[note]]\n\nTitle:\r\n\t_**BRICK**_\r\n  & STEEL\rNext to "
                                       "it\nDraft date: 1\n\nFADE IN:\n\nINT. A\n");
    using Pair = std::pair<std::string, std::string>;
    EXPECT_THAT(screenplay.titlePage,
                testing::ElementsAre(Pair("Title", "BRICK\n& STEEL\nNext to it"), Pair("Draft date", "1")));
    EXPECT_EQ(Compact(screenplay), "scene|action: FADE IN:|scene|heading: INT. A");
    EXPECT_EQ(Read(WriteFountain(screenplay)).titlePage, screenplay.titlePage);
    for (const char* none :
         {"FADE IN:\n\n", "Fade in:\n\n", "JO: Hi.\n\n", "Well, he says: Hi.\n\n", "Int. A: B\n\n"}) {
        EXPECT_TRUE(Read(std::string(none) + "INT. C").titlePage.empty()) << none;
    }
    EXPECT_EQ(Compact(Read(WriteFountain(Read("\nINT. A\n\n!Title: x")))), "scene|heading: INT. A|action: Title: x");
    EXPECT_EQ(Compact(Read(WriteFountain(Read("!Title: x\n\nINT. A")))),
              "scene|action: Title: x|scene|heading: INT. A");
}

TEST(FountainText, CarriesAStoryFromElsewhere) {
    const auto paragraph = [](const std::string& kind, const std::string& text) {
        return "<paragraph element='" + kind + "'><textRun>" + text + "</textRun></paragraph>";
    };
    const std::string story = support::WithBody(
        "<scene>" + paragraph("Dialog", "Lost.") + paragraph("Shot", "CLOSE") + "</scene><scene sceneNumber='1/2 a'>" +
        paragraph("Action", "INT. X\n\n@y") + paragraph("SceneHeading", "a") + paragraph("SceneHeading", "AUSS. B\nC") +
        paragraph("Character", "Jo ^") + paragraph("Parenthetical", "low") + paragraph("Dialog", "(Hi.)\n~") +
        paragraph("Action", "JO") + paragraph("Dialog", "[[You]]?") + paragraph("Character", "BO") +
        paragraph("Transition", "A &lt;") + paragraph("Parenthetical", "x") + "</scene><scene/>");
    EXPECT_EQ(Compact(Read(WriteFountain(Read(story)))),
              "scene|action: Lost.|action: CLOSE|scene 1/2 a|heading: AUSS. B C|action: INT. X//@y|action: a|cue: Jo ^"
              "|parenthetical: (low)|dialogue: (Hi.)/~|action: JO|cue: Jo ^|dialogue: [[You]]?|cue: BO|transition: A "
              "<|cue: BO"
              "|parenthetical: (x)|scene");
}

TEST(FountainText, WarningsNameLinesOfTheFile) {
    const Screenplay screenplay = Read("Rain.\n\nINT. A /*\n\n*/\n[[a\nb]]\n[[c\n\nINN. B\n\nx\nEXT. C\n\n/* d");
    EXPECT_EQ(support::Warnings(screenplay),
              "1: text before the first heading is a scene of its own|"
              "8: the note is not closed before an empty line; it stays text|"
              "10: read as a scene heading, which Fountain alone does not know|"
              "13: reads like a scene heading, but no empty line stands before it; it is action|"
              "15: the boneyard is never closed; it stays text");
    ASSERT_EQ(screenplay.notes.size(), 1U);
    EXPECT_EQ(screenplay.notes[0].text + std::to_string(screenplay.notes[0].line), "a\nb6");
    EXPECT_EQ(screenplay.lines.Of(*screenplay.root->document->body->section->scenes.back()), 10U);
}

TEST(FountainText, IsRefusedWithoutHeadingAndCueOrBeyondLimits) {
    ReadOptions small;
    small.limits.text = 10;
    ReadOptions strict;
    strict.strictFountain = true;
    EXPECT_THROW(Read("Rain.\n\nFADE OUT.\n"), ReadError);
    EXPECT_THROW(Read("INN. B\n\nRain.", strict), ReadError);
    EXPECT_THROW(Read("INT. A\n\n12345678901\n", small), ReadError);
    EXPECT_THROW(Read("INT. A\n\n12345\n67890\n", small), ReadError);
}

TEST(FountainText, HostileLinesTakeLinearTime) {
    for (const char* piece :
         {"*", "*a ", "a* ", "*a_ ", "_a* ", "[[", "/* ", "/* /* */", "(", "#", "\\#", "\\", "a\n[[", "JO ^("}) {
        std::string text = "INT. A\n\n";
        while (text.size() < 300'000) {
            text += piece;
        }
        EXPECT_EQ(Read(text).root->document->body->section->scenes.size(), 1U) << piece;
        EXPECT_EQ(Read("INT. A\n\n@" + text.substr(8)).dualDialogue.size(), 0U) << piece;
    }
}

} // namespace

#include <gmock/gmock.h>

#include <zonscreenplay/Screenplay.h>

#include "screenplay/Compact.h"
#include "support/MessageOf.h"

namespace {

using support::Compact;
using support::Warnings;
using zonscreenplay::ReadScreenplayFromMemory;
using zonscreenplay::Screenplay;

std::string P(const std::string& type, const std::string& content, const std::string& attributes = "") {
    return "<Paragraph Type='" + type + "' " + attributes + ">" + content + "</Paragraph>\n";
}

std::string T(const std::string& text) {
    return "<Text>" + text + "</Text>";
}

Screenplay Read(const std::string& content, const std::string& rest = "") {
    return ReadScreenplayFromMemory("<FinalDraft DocumentType='Script' Version='5'><Content>\n" + content +
                                        "</Content>" + rest + "</FinalDraft>",
                                    "film.xml");
}

struct Case {
    const char* name;
    std::string content;
    const char* body;
    const char* warnings = ""; ///< The script begins in line 2.
};

const std::string kScene = P("Scene Heading", T("INT. A"), "Number='1'");
const std::string kOldScene = P("Scene Heading", T("INT. OLD"), "Number='9'") + P("Action", T("Old."));

const Case kCases[] = {
    {"EveryKind",
     kScene + P("Action", T("a")) + P("Character", T("C")) + P("Parenthetical", T("(p)")) + P("Dialogue", T("d")) +
         P("Lyrics", T("l")) + P("Singing", T("s")) + P("Transition", T("t")) + P("Shot", T("S")) +
         P("General", T("g")) + "<Paragraph><Text>n</Text></Paragraph>",
     "scene 1|heading: INT. A|action: a|cue: C|parenthetical: (p)|dialogue: d|dialogue: l|dialogue: s|"
     "transition: t|shot: S|action: g|action: n"},
    {"RunsAreJoinedWithNothingBetween",
     kScene + P("Action", "\n  <Text Style='Bold'>He </Text>\n<Text/><Text> </Text><Text RevisionID='2'>"
                          "g&#111;es\nout</Text>"),
     "scene 1|heading: INT. A|action: He  goes/out"},
    {"NestedElementsAreNoText",
     P("Scene Heading", "<SceneProperties><Summary>" + P("Action", T("no")) +
                            "</Summary></SceneProperties><ScriptNote>" + P("", T("no")) + "</ScriptNote>" +
                            T("EXT. B")) +
         P("Action", "<AltCollection>" + P("Dialogue", T("no")) + "</AltCollection><Text>y<b>no</b>es</Text>"),
     "scene|heading: EXT. B|action: yes"},
    {"DualDialogueInAParagraph",
     kScene + "<Paragraph>" + T("Both.") + "<DualDialogue>" + P("Character", T("L")) + P("Dialogue", T("l")) +
         P("Character", T("R")) + P("Dialogue", T("r")) + "</DualDialogue>" + T("Rest.") + "</Paragraph>",
     "scene 1|heading: INT. A|action: Both.|cue: L|dialogue: l|cue: R|dialogue: r|action: Rest."},
    {"NumbersCountOnHeadingsOnly",
     P("Scene Heading", T("INT. A"), "Number=' 12A-1 '") + P("Shot", T("S"), "Number='13'"),
     "scene  12A-1 |heading: INT. A|shot: S"},
    {"HeadingWithoutTextIsAScene", P("Scene Heading", "", "Number='4'") + P("Action", T("a")), "scene 4|action: a"},
    {"OmittedWithinItsHeading",
     P("Scene Heading", "<OmittedScene>" + kOldScene + "</OmittedScene>" + T("Omitted OMITTED"), "Number='9'") +
         P("Scene Heading", "<OmittedScene>" + kOldScene + "</OmittedScene>" + T("INT. OLD")),
     "scene 9|heading: Omitted OMITTED|scene|heading: OMITTED",
     "2: scene 9 is omitted|5: a scene without a number is omitted"},
    {"OmittedBetweenParagraphs", kScene + "<OmittedScene>" + kOldScene + "</OmittedScene><OmittedScene/>",
     "scene 1|heading: INT. A|scene 9|heading: OMITTED|scene|heading: OMITTED",
     "3: scene 9 is omitted|5: a scene without a number is omitted"},
    {"KindsThatAreLeftOut",
     kScene + P("Cast List", T("A, B")) + P("Cast List", T(" ")) + P("Outline 2", T("o")) + P("End of Act", T("e")),
     "scene 1|heading: INT. A",
     "3: a paragraph of the kind 'Cast List' is left out: 'A, B'|"
     "5: a paragraph of the kind 'Outline 2' is left out: 'o'|"
     "6: a paragraph of the kind 'End of Act' is left out: 'e'"},
    {"UnknownKindsAreAction", kScene + P("Teaser", T("x")) + P("Teaser", T("y")),
     "scene 1|heading: INT. A|action: x|action: y", "3: paragraphs of the kind 'Teaser' are read as action"},
    {"ParagraphsWithoutTextAreDropped",
     kScene + P("Character", T("C")) + P("Dialogue", "") + P("Action", T("\n \xC2\xA0")),
     "scene 1|heading: INT. A|cue: C"},
    {"WhatIsSaidBeforeTheFirstHeadingIsAScene", P("Transition", T("FADE IN:")) + P("Action", T("a")) + kScene,
     "scene|transition: FADE IN:|action: a|scene 1|heading: INT. A",
     "2: text before the first heading is a scene of its own"},
    {"ATransitionAloneIsNone", P("Transition", T("FADE IN:")) + kScene, "scene 1|heading: INT. A",
     "2: what stands before the first heading is left out: 'FADE IN:'"},
    {"AScriptOfATransitionIsNotEmpty", P("Transition", T("FADE IN:")),
     "scene|transition: FADE IN:", "2: text before the first heading is a scene of its own"},
    {"Empty", "", ""},
};

TEST(Fdx, GivesTheScript) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        const Screenplay screenplay = Read(c.content);
        EXPECT_EQ(Compact(screenplay), c.body);
        EXPECT_EQ(Warnings(screenplay), c.warnings);
    }
}

TEST(FdxFacts, StandBesideTheModel) {
    const Screenplay screenplay =
        Read(P("Scene Heading", "<SceneProperties Page='7A' Length='1 3/8'/><Text RevisionID='1'>INT. A</Text>") +
                 P("Action", "<ScriptNote><Paragraph>" + T("Why") + "</Paragraph><Paragraph>" + T("so?") +
                                 "</Paragraph></ScriptNote><Text RevisionID='2'>a</Text>") +
                 P("Scene Heading", "<SceneProperties Length='0:01:30'/><Text RevisionID='3'>INT. B</Text>") +
                 "<DualDialogue>" + P("Character", T("L")) + P("Character", T("R")) + "</DualDialogue>",
             "<Revisions><Revision ID='2' Name='Pink' Color='#F0F'/></Revisions><TitlePage><Content>" +
                 P("", T("The Film")) + "</Content></TitlePage>");
    ASSERT_EQ(screenplay.scenes.size(), 2U);
    EXPECT_EQ(screenplay.format, zonscreenplay::Format::FDX);
    EXPECT_EQ(screenplay.scenes[0].page + " " + screenplay.scenes[0].revision + " " + screenplay.scenes[0].color,
              "7A Pink #F0F");
    EXPECT_EQ(screenplay.scenes[0].eighths, 11U);
    EXPECT_EQ(screenplay.scenes[1].revision, "3"); // nobody names it
    EXPECT_EQ(screenplay.scenes[1].eighths, 0U);
    const auto& scenes = screenplay.root->document->body->section->scenes;
    EXPECT_EQ(scenes[0]->shotDuration, u"");
    EXPECT_EQ(scenes[1]->shotDuration, u"0:01:30");
    EXPECT_EQ(screenplay.notes.at(0).text, "Why\nso?");
    EXPECT_EQ(screenplay.notes.at(0).line, 3U);
    EXPECT_EQ(screenplay.titlePage.at(0).second, "The Film");
    EXPECT_EQ(screenplay.dualDialogue.at(0).right, scenes[1]->paragraphs.at(2));
    EXPECT_EQ(screenplay.lines.Of(*scenes[1]), 4U);
    EXPECT_EQ(scenes[1]->paragraphs.at(0)->objectID.AsString(), u"p3");
}

TEST(FdxLimits, HoldAcrossRuns) {
    zonscreenplay::ReadOptions options;
    options.limits.text = 10;
    const std::string script =
        "<FinalDraft><Content>\n<Paragraph>" + T("12345") + T("678901") + "</Paragraph></Content></FinalDraft>";
    EXPECT_EQ(
        support::MessageOf<zonscreenplay::ReadError>([&] { ReadScreenplayFromMemory(script, "film.fdx", options); }),
        "film.fdx:2:1: a text is longer than 10 characters");
}

} // namespace

#include "story/StoryCheck.h"

#include <gmock/gmock.h>

#include <zonscreenplay/Screenplay.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string Paragraph(const std::string& element, const std::string& text, const std::string& attributes = "") {
    return "<paragraph objID='p' element='" + element + "' " + attributes + "><textRun>" + text +
           "</textRun></paragraph>\n";
}

std::string Scene(const std::string& content, const std::string& number = "1") {
    return "<scene sceneNumber='" + number + "'>\n" + content + "</scene>\n";
}

// "line kind message" of every finding; the scenes begin in line 2.
std::vector<std::string> Findings(const std::string& scenes) {
    zonscreenplay::ReadOptions options;
    options.recordLines = true;
    const zonscreenplay::Screenplay story =
        zonscreenplay::ReadScreenplayFromMemory("<Talewright version='1.0'><document><stream name='body'><section>\n" +
                                                    scenes + "</section></stream></document></Talewright>",
                                                "s", options);
    std::vector<std::string> lines;
    for (const zonstory::Finding& finding : zonstory::CheckStory(story)) {
        lines.push_back(std::to_string(finding.line) + ' ' + zonstory::KindWord(finding.kind) + ' ' + finding.message);
    }
    return lines;
}

const std::string kHeading = Paragraph("SceneHeading", "INT. HOUSE - DAY");

TEST(StoryCheck, FindsNothingInASoundStory) {
    EXPECT_THAT(Findings(Scene(Paragraph("SceneHeading", "P.O.V. ANN - NIGHT", "shotDuration='0:01:30'") +
                               Paragraph("Character", "ANN") + Paragraph("Parenthetical", "(beat)") +
                               Paragraph("Dialog", "Hi.")) +
                         Scene(Paragraph("SceneHeading", "est. CASA notte night"), "2")),
                IsEmpty());
    EXPECT_THAT(Findings(""), IsEmpty());
}

// A heading, and what is found in its line.
const std::pair<const char*, const char*> kHeadings[] = {
    {"HOUSE - DAY", "setting the setting of 'HOUSE - DAY' is not recognised"},
    {"KITCHEN. - DAY", "setting the setting of 'KITCHEN. - DAY' is not recognised"},
    {"INTERIOR HOUSE - DAY", "setting only 'INT' is recognised of the setting of 'INTERIOR HOUSE - DAY'; the location "
                             "reads 'ERIOR HOUSE'"},
    {"INT/EXT. CAR - DAY", "setting only 'INT' is recognised of the setting of 'INT/EXT. CAR - DAY'; the location "
                           "reads '/EXT. CAR'"},
    {"INT. HOUSE", "time-of-day the time of day of 'INT. HOUSE' is not recognised"},
    {"INT. HOUSE – DAWN", "time-of-day the time of day of 'INT. HOUSE – DAWN' is not recognised: only a hyphen (-) "
                          "parts it from the location"},
    {"INT. SMITH-JONES - DAY", "time-of-day the first dash of 'INT. SMITH-JONES - DAY' ends the location 'SMITH'; the "
                               "time of day reads 'JONES - DAY'"},
    {"P.D.V.", "time-of-day the time of day of 'P.D.V.' is not recognised"},
};

TEST(HeadingCheck, TellsWhatWasNotRecognised) {
    for (const auto& [heading, finding] : kHeadings) {
        EXPECT_THAT(Findings(Scene(Paragraph("SceneHeading", heading))), ElementsAre(std::string("3 ") + finding));
    }
}

TEST(StoryCheck, FindsMissingAndDuplicateNumbers) {
    EXPECT_THAT(Findings(Scene(kHeading, "1") + Scene(kHeading, "") + Scene(kHeading, "1")),
                ElementsAre("5 missing-number the scene has no number",
                            "8 duplicate-number the number is also that of scene #1 in line 2"));
    EXPECT_THAT(Findings(Scene(kHeading, "") + Scene(kHeading, "")),
                ElementsAre("2 missing-number no scene has a number"));
}

TEST(StoryCheck, PairsCuesAndDialogueAsTheLibraryDoes) {
    EXPECT_THAT(
        Findings(Scene(kHeading + Paragraph("Dialog", "Hello.") + Paragraph("Character", "ANN") +
                       Paragraph("Character", "BOB") + Paragraph("Dialog", "") + Paragraph("Character", "") +
                       Paragraph("Dialog", "Bye."))),
        ElementsAre("4 dialogue-without-speaker dialogue without a speaker is given to the next speaker, ANN",
                    "6 speaker-without-dialogue BOB has a cue and says nothing",
                    "8 dialogue-without-speaker the cue names no speaker",
                    "9 dialogue-without-speaker dialogue without a speaker is lost: nobody has a cue after it"));
}

TEST(StoryCheck, FindsDurationsThatMeanSomethingElse) {
    const auto with = [](const std::string& duration) {
        return Findings(Scene(Paragraph("SceneHeading", "INT. A - DAY", "shotDuration='" + duration + "'")));
    };
    EXPECT_THAT(with("0:00:05"), IsEmpty());
    EXPECT_THAT(with("1:30"), ElementsAre("3 duration the duration '1:30' is read as h:m:s, so it means 90 minutes"));
    for (const std::string duration : {"5 s", "0:00:05:12", ":05", "0:-1:0", "1e3", "99999999999"}) {
        EXPECT_THAT(with(duration), ElementsAre("3 duration the duration '" + duration + "' is not h:m:s"));
    }
    EXPECT_THAT(with("600000:0:0"), ElementsAre("3 duration the duration '600000:0:0' is too long to be stored"));
}

TEST(StoryCheck, FindsScenesWithoutAPacket) {
    EXPECT_THAT(Findings(Scene("")), ElementsAre("2 setting the scene has no heading",
                                                 "2 no-packet the scene yields no packet: it has no paragraphs"));
    EXPECT_THAT(Findings(Scene("<paragraph/>" + kHeading)),
                ElementsAre("2 no-packet the scene yields no packet: its first paragraph has no objID"));
}

} // namespace

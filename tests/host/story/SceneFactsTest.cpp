#include "story/SceneFacts.h"

#include <gmock/gmock.h>

#include "story/WordCount.h"
#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/SceneContent.h>

namespace {

using ::testing::ElementsAre;

struct WordCase {
    const char* name;
    zoncore::UString text;
    std::size_t count;
};

const WordCase kWordCases[] = {
    {"Empty", u"", 0},
    {"Blanks", u" \t\n", 0},
    {"Plain", u"Rain on glass.", 3},
    {"Joined", u"Don't, Smith-Jones: it’s 3.50!", 4},
    {"DashesAndDots", u"No — wait... what?", 3},
    {"TrailingJoiner", u"rock 'n' roll-", 3},
    {"Accents", u"Grüß Élodie cafe\u0301s", 3},
    {"Cyrillic", u"На большой дороге", 3},
    {"Chinese", u"医院，白天。", 4},
    {"ChineseBeyondBMP", u"𠮷野家", 3},
    {"Japanese", u"コーヒー、2杯", 6},
    {"Korean", u"밤이 깊었다", 2},
    {"MixedScripts", u"INT 医院 X5", 4},
    {"LoneSurrogate", u"a \xD800 b", 2},
};

TEST(WordCount, CountsAsAPersonWould) {
    for (const WordCase& c : kWordCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(zonstory::CountWords(c.text), c.count);
    }
}

TEST(SpeakerName, LeavesOutWhatTheCueAdds) {
    EXPECT_EQ(zonstoryparser::SpeakerName(u"ANN (V.O.)"), u"ANN");
    EXPECT_EQ(zonstoryparser::SpeakerName(u" ANN (O.S.) (CONT'D) "), u"ANN");
    EXPECT_EQ(zonstoryparser::SpeakerName(u"小明（旁白）"), u"小明");
    EXPECT_EQ(zonstoryparser::SpeakerName(u"(ALL)"), u"(ALL)");
    EXPECT_EQ(zonstoryparser::SpeakerName(u"MAN (40) AND DOG"), u"MAN (40) AND DOG");
}

constexpr char kStory[] = R"(<Talewright version="1.0"><document><stream name="body"><section>
<scene sceneNumber="1"><paragraph objID="a" element="SceneHeading" shotDuration="0:0:5"><textRun>INT. HOUSE - DAY</textRun>
</paragraph><paragraph element="Character"><textRun>ANN</textRun></paragraph><paragraph element="Dialog"><textRun>Hi </textRun>
<textRun>you.</textRun></paragraph><paragraph element="Parenthetical"><textRun>not counted at all</textRun></paragraph>
<paragraph element="Dialog"><textRun>Bye.</textRun></paragraph><paragraph element="Character"><textRun>BOB</textRun></paragraph>
<paragraph element="Action"><textRun>It rains.</textRun></paragraph></scene>
<scene><paragraph element="Character"><textRun>BOB</textRun></paragraph><paragraph element="Dialog"><textRun>No.</textRun>
</paragraph><paragraph element="Character"><textRun>ANN (V.O.)</textRun></paragraph><paragraph element="Dialog"><textRun>Yes.
</textRun></paragraph></scene><scene/></section></stream></document></Talewright>)";

TEST(SceneFacts, CountWhoSpeaksAndWhatIsSaid) {
    const zonscreenplay::Screenplay story = zonscreenplay::ReadScreenplayFromMemory(kStory, "s");
    const auto scenes = zonstory::DescribeScenes(story);
    ASSERT_EQ(scenes.size(), 3U);
    EXPECT_THAT(scenes[0].speakers, ElementsAre("ANN"));
    EXPECT_EQ(scenes[0].dialogueWords, 3U);
    EXPECT_EQ(scenes[0].actionWords, 2U);
    EXPECT_THAT(scenes[1].speakers, ElementsAre("BOB", "ANN"));
    const auto characters = zonstory::DescribeCharacters(*story.root);
    ASSERT_EQ(characters.size(), 2U);
    EXPECT_EQ(characters[0].name, "ANN");
    EXPECT_THAT(characters[0].scenes, ElementsAre(1, 2));
    EXPECT_EQ(characters[0].lines, 2U);
    EXPECT_EQ(characters[0].words, 4U);
    EXPECT_EQ(characters[1].name, "BOB");
    EXPECT_THAT(characters[1].scenes, ElementsAre(2));
}

} // namespace

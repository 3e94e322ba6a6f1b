#include "story/WordCount.h"

#include <gtest/gtest.h>

namespace {

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

} // namespace

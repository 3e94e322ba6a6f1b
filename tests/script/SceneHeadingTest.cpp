#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

namespace {

using namespace zonstoryparser;

struct HeadingCase {
    const char* name;
    UString heading, setting, location, timeOfDay;
    friend void PrintTo(const HeadingCase& row, std::ostream* os) { *os << row.name; }
};

class SceneHeading : public ::testing::TestWithParam<HeadingCase> {};

TEST_P(SceneHeading, SplitsIntoSettingLocationAndTime) {
    UString setting;
    UString location;
    UString timeOfDay;
    ParseSceneHeading(GetParam().heading, setting, location, timeOfDay);
    EXPECT_EQ(setting, GetParam().setting);
    EXPECT_EQ(location, GetParam().location);
    EXPECT_EQ(timeOfDay, GetParam().timeOfDay);
}

std::string NameOf(const ::testing::TestParamInfo<HeadingCase>& info) {
    return info.param.name;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Settings, SceneHeading, ::testing::Values(
    HeadingCase{"LowerCase",       u"ext. garden - day", u"EXT",        u"garden",  u"day"},
    HeadingCase{"PointOfView",     u"P.O.V. JOHN",       u"P.O.V.",     u"JOHN",    u""},
    HeadingCase{"EitherSide",      u"i/e. CAR - DUSK",   u"I/E",        u"CAR",     u"DUSK"},
    HeadingCase{"GermanView",      u"Subjektive ANNA",   u"SUBJEKTIVE", u"ANNA",    u""},
    HeadingCase{"RomanceOutside",  u"EST. PORTO - ALBA", u"EST",        u"PORTO",   u"ALBA"},
    HeadingCase{"RomanceView",     u"p.d.v. LUCIA",      u"P.D.V.",     u"LUCIA",   u""},
    HeadingCase{"RomanceEither",   u"A/I. BAR",          u"A/I",        u"BAR",     u""},
    HeadingCase{"Alone",           u"INT",               u"INT",        u"",        u""},
    HeadingCase{"OneDotIsSkipped", u"INT.. HOUSE",       u"INT",        u". HOUSE", u""},
    HeadingCase{"LeadingBlank",    u" INT. HOUSE",       u"INT",        u"HOUSE",   u""}), NameOf);

INSTANTIATE_TEST_SUITE_P(PrefixOrder, SceneHeading, ::testing::Values(
    HeadingCase{"IntBeforeIntExt",   u"INT/EXT. HOUSE - DAY", u"INT",  u"/EXT. HOUSE",  u"DAY"},
    HeadingCase{"ExtBeforeExtInt",   u"EXT/INT. HOUSE",       u"EXT",  u"/INT. HOUSE",  u""},
    HeadingCase{"IntBeforeIntEst",   u"INT/EST. BAR",         u"INT",  u"/EST. BAR",    u""},
    HeadingCase{"InnBeforeInnAuss",  u"INN/AUSS. WAGEN",      u"INN",  u"/AUSS. WAGEN", u""},
    HeadingCase{"AussBeforeAussInn", u"AUSS/INN. WAGEN",      u"AUSS", u"/INN. WAGEN",  u""},
    HeadingCase{"NoWordBoundary",    u"INTERIOR HOUSE",       u"INT",  u"ERIOR HOUSE",  u""},
    HeadingCase{"ForwardSlash",      u"I/E/I. CAR",           u"I/E",  u"/I. CAR",      u""}), NameOf);

INSTANTIATE_TEST_SUITE_P(WithoutSetting, SceneHeading, ::testing::Values(
    HeadingCase{"Empty",                        u"",                    u"",          u"",        u""},
    HeadingCase{"NoDot",                        u"HOUSE - NIGHT",       u"",          u"HOUSE",   u"NIGHT"},
    HeadingCase{"RepeatedDots",                 u"KITCHEN...  MORNING", u"KITCHEN",   u"MORNING", u"Morning"},
    HeadingCase{"BlankToken",                   u" .HOUSE",             u"",          u"HOUSE",   u""},
    HeadingCase{"TrailingBlankOfTheTokenStays", u"\tOLD MILL . YARD",   u"OLD MILL ", u"YARD",    u""},
    HeadingCase{"TrailingDot",                  u"HOUSE.",              u"HOUSE",     u"",        u""},
    HeadingCase{"OnlyDots",                     u"...",                 u"",          u"",        u""},
    HeadingCase{"NoFoldingBeyondLetters",       u"I\u000F. HOUSE",      u"I\u000F",   u"HOUSE",   u""},
    HeadingCase{"NoFoldingBeyondASCII",         u"\u0130NT. HOUSE",     u"\u0130NT",  u"HOUSE",   u""}), NameOf);

INSTANTIATE_TEST_SUITE_P(RightHalf, SceneHeading, ::testing::Values(
    HeadingCase{"LeftmostDashWins",       u"INT. HOUSE - BAR - NIGHT",  u"INT", u"HOUSE",            u"BAR - NIGHT"},
    HeadingCase{"HyphenIsADash",          u"INT. SMITH-JONES INN - DAY", u"INT", u"SMITH",            u"JONES INN - DAY"},
    HeadingCase{"LastWordAnyCase",        u"INT. HOUSE eVeNiNg",         u"INT", u"HOUSE eVeNiNg",    u"Evening"},
    HeadingCase{"LateNightIsNight",       u"INT. HOUSE LATE NIGHT",      u"INT", u"HOUSE LATE NIGHT", u"Night"},
    HeadingCase{"WordNeedNotStand",       u"INT. SUNDAY",                u"INT", u"SUNDAY",           u"Day"},
    HeadingCase{"TrailingBlankHides",     u"INT. HOUSE NIGHT ",          u"INT", u"HOUSE NIGHT ",     u""},
    HeadingCase{"DashFirst",              u"INT. -NIGHT",                u"INT", u"-NIGHT",           u"Night"},
    HeadingCase{"DashFirstAndLater",      u"INT. -A-B",                  u"INT", u"-A",               u"B"},
    HeadingCase{"DashLast",               u"INT. HOUSE -",               u"INT", u"HOUSE",            u""},
    HeadingCase{"OneCharacter",           u"INT. -",                     u"INT", u"-",                u""},
    HeadingCase{"TimeKeepsTrailingBlank", u"INT. A -\t DAY ",            u"INT", u"A",                u"DAY "}), NameOf);
// clang-format on

TEST(SceneHeadingOutputs, WhatTheHeadingDoesNotGiveIsLeftAlone) {
    UString setting = u"s";
    UString location = u"l";
    UString timeOfDay = u"t";
    ParseSceneHeading(u"INT.", setting, location, timeOfDay);
    EXPECT_EQ(setting + location + timeOfDay, u"INTlt");
    ParseRightHalf(u"HOUSE NIGHT", location, timeOfDay);
    EXPECT_EQ(location + timeOfDay, u"lt");
    UString blankBeforeDash;
    ParseRightHalf(u" - DAY", blankBeforeDash, timeOfDay);
    EXPECT_EQ(blankBeforeDash, u" - DAY");
    EXPECT_EQ(timeOfDay, u"DAY");
}

} // namespace

#include <string>

#include <gtest/gtest.h>

#include <zoncore/UString.h>

namespace {

using zoncore::UString;

struct UTF8Case {
    const char* name;
    std::string utf8;
    UString utf16;
};

const UTF8Case kMalformed[] = {
    {"LoneTrailByte", "a\x80z", u"a\uFFFDz"},
    {"LeadByteBeforeACharacterThatStays",
     "\xC3"
     "A",
     u"\uFFFDA"},
    {"CutShortAtTheEnd", "a\xE2\x82", u"a\uFFFD"},
    {"CutShortBeforeAGoodSequence", "\xF0\x9F\x98\xC3\xA4", u"\uFFFD\u00E4"},
    {"Overlong", "\xC0\xAF", u"\uFFFD\uFFFD"},
    {"Surrogate", "\xED\xA0\x80z", u"\uFFFDz"},
    {"BeyondUnicode", "\xF4\x90\x80\x80z", u"\uFFFDz"},
    {"NoSuchLead", "\xFFz", u"\uFFFDz"},
};

TEST(UString, MalformedUTF8BecomesReplacementsAndLosesNothingElse) {
    for (const UTF8Case& row : kMalformed) {
        EXPECT_EQ(zoncore::UTF8to16(row.utf8), row.utf16) << row.name;
    }
}

TEST(UString, UnpairedSurrogatesBecomeReplacementsAndLoseNothingElse) {
    const std::pair<UString, std::string> rows[] = {
        {UString(u"a") + char16_t(0xD800) + u"b", "a\xEF\xBF\xBD"
                                                  "b"},
        {UString(u"a") + char16_t(0xDC00) + u"b", "a\xEF\xBF\xBD"
                                                  "b"},
        {UString(1, char16_t(0xD800)), "\xEF\xBF\xBD"},
        {UString(1, char16_t(0xD800)) + u"\U0001F600", "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
    };
    for (const auto& [utf16, utf8] : rows) {
        EXPECT_EQ(zoncore::UTF16to8(utf16), utf8);
    }
}

TEST(UString, EveryCodePointSurvivesTheRoundTrip) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; codePoint += codePoint < 0x3000 ? 1 : 61) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            continue;
        }
        UString text;
        if (codePoint < 0x10000) {
            text = UString(1, static_cast<char16_t>(codePoint));
        } else {
            text = {static_cast<char16_t>(0xD7C0 + (codePoint >> 10)),
                    static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))};
        }
        ASSERT_EQ(zoncore::UTF8to16(zoncore::UTF16to8(text)), text) << std::hex << std::uint32_t(codePoint);
    }
}

} // namespace

#include <gtest/gtest.h>

#include <zoncore/UString.h>

namespace {

using zoncore::UString;
using namespace std::string_literals;

// clang-format off
const std::pair<std::string, UString> kSame[] = {
    {"a\0b"s, u"a\0b"s}, {"\x7F", u"\x7F"},
    {"\xC2\x80", u"\u0080"}, {"\xDF\xBF", u"\u07FF"},
    {"\xE0\xA0\x80", u"\u0800"}, {"\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"}, {"\xEF\xBF\xBF", u"\uFFFF"},
    {"\xF0\x90\x80\x80", u"\U00010000"}, {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
};

const std::pair<std::string, UString> kMalformedUTF8[] = {
    {"a\x80z", u"a\uFFFDz"},                        // a lone trail byte
    {"\xC3" "A", u"\uFFFDA"},                       // a lead byte before a character that stays
    {"a\xE2\x82", u"a\uFFFD"},                      // cut short at the end
    {"\xF0\x9F\x98\xC3\xA4", u"\uFFFD\u00E4"},      // cut short before a good sequence
    {"\xC0\xAF", u"\uFFFD\uFFFD"},                  // overlong
    {"\xED\xA0\x80z", u"\uFFFDz"},                  // a surrogate
    {"\xF4\x90\x80\x80z", u"\uFFFDz"},              // beyond Unicode
    {"\xFFz", u"\uFFFDz"},                          // no such lead
};

const std::pair<std::string, UString> kUnpairedSurrogates[] = {
    {"a\xEF\xBF\xBD" "b", {u'a', char16_t(0xD800), u'b'}},
    {"a\xEF\xBF\xBD" "b", {u'a', char16_t(0xDC00), u'b'}},
    {"\xEF\xBF\xBD", {char16_t(0xD800)}},
    {"\xEF\xBF\xBD\xF0\x9F\x98\x80", {char16_t(0xD800), char16_t(0xD83D), char16_t(0xDE00)}},
};
// clang-format on

TEST(UString, EachLengthOfUTF8IsReadAndWritten) {
    for (const auto& [utf8, utf16] : kSame) {
        EXPECT_EQ(zoncore::UTF8to16(utf8), utf16);
        EXPECT_EQ(zoncore::UTF16to8(utf16), utf8);
    }
}

// ASCII is looked at several characters at a time.
TEST(UString, OneCharacterBeyondASCIIIsFoundWhereverItStands) {
    for (std::size_t length = 0; length < 20; ++length) {
        for (std::size_t at = 0; at <= length; ++at) {
            const std::string utf8 = std::string(at, 'a') + "\xC2\x80" + std::string(length - at, 'z');
            const UString utf16 = UString(at, u'a') + u'\u0080' + UString(length - at, u'z');
            EXPECT_EQ(zoncore::UTF8to16(utf8), utf16);
            EXPECT_EQ(zoncore::UTF16to8(utf16), utf8);
        }
    }
}

TEST(UString, WhatIsMalformedBecomesReplacementsAndNothingElseIsLost) {
    for (const auto& [utf8, utf16] : kMalformedUTF8) {
        EXPECT_EQ(zoncore::UTF8to16(utf8), utf16) << utf8;
    }
    for (const auto& [utf8, utf16] : kUnpairedSurrogates) {
        EXPECT_EQ(zoncore::UTF16to8(utf16), utf8);
    }
}

} // namespace

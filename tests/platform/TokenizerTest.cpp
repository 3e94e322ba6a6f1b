#include <gtest/gtest.h>

#include <zoncore/Coercion.h>
#include <zoncore/Tokenizer.h>

namespace {

using zoncore::Tokenizer;
using zoncore::UString;

TEST(Tokenizer, CutsAtEachDelimiter) {
    const std::tuple<UString, bool, std::vector<UString>> rows[] = {
        {u"", false, {}},
        {u"1:30", false, {u"1", u"30"}},
        {u"1:", false, {u"1"}},
        {u":", false, {u""}},
        {u"::5", false, {u"", u"", u"5"}},
        {u"::5", true, {u"", u"5"}},
        {u"a:::b:", true, {u"a", u"b"}},
    };
    for (const auto& [text, skipRepeated, expected] : rows) {
        Tokenizer tokenizer(text, u":", 0, skipRepeated);
        std::vector<UString> tokens;
        while (tokenizer.HasMoreTokens()) {
            tokens.push_back(tokenizer.NextToken());
        }
        EXPECT_EQ(tokens, expected) << zoncore::UTF16to8(text);
        EXPECT_EQ(tokenizer.NextToken(), u"");
        EXPECT_EQ(tokenizer.GetRemaining(), u"");
    }
}

TEST(Tokenizer, RemainingStartsBehindTheDelimitersPassed) {
    Tokenizer tokenizer(u"KITCHEN...  MORNING.", u".", 0, true);
    EXPECT_EQ(tokenizer.NextToken(), u"KITCHEN");
    EXPECT_EQ(tokenizer.GetRemaining(), u"  MORNING.");
    Tokenizer late(u"ab", u".", 2, false);
    EXPECT_FALSE(late.HasMoreTokens());
}

TEST(Coercion, ReadsAsStreamInputDoes) {
    // clang-format off
    const std::pair<UString, int> rows[] = {
        {u"", 0}, {u" \t\n+7", 7}, {u"-60", -60}, {u"a", 0}, {u"- 5", 0},
        {u"12s", 12}, {u"0x10", 0}, {u"1,000", 1}, {u"\u0663", 0}, {u"7\u00A0", 7},
        {u"2147483647", 2147483647}, {u"2147483648", 0}, {u"-2147483648", -2147483647 - 1}, {u"-2147483649", 0},
        {u"99999999999999999999999", 0},
    };
    // clang-format on
    for (const auto& [text, value] : rows) {
        EXPECT_EQ(zoncore::Coercion<int>::Result(text), value) << zoncore::UTF16to8(text);
    }
}

} // namespace

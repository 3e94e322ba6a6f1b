#include "output/SafeText.h"

#include <gtest/gtest.h>

#include "output/DisplayWidth.h"
#include "output/Json.h"
#include <nlohmann/json.hpp>

namespace {

using zonstory::DisplayWidth;
using zonstory::SafeLine;
using zonstory::SafeLines;
using zonstory::ValidUTF8;

TEST(SafeText, EscapesWhatATerminalWouldActOn) {
    EXPECT_EQ(SafeLine("INT. KÜCHE – 医院 🎬"), "INT. KÜCHE – 医院 🎬");
    EXPECT_EQ(SafeLine("a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(SafeLine("\x1b[2J\x07\x7f"), "\\x1b[2J\\x07\\x7f");
    EXPECT_EQ(SafeLine("\xC2\x9B"), "\\x9b");               // the control sequence introducer of eight bits
    EXPECT_EQ(SafeLine("a\xE2\x80\xAEvom"), "a\\u202evom"); // turns the reading direction
    EXPECT_EQ(SafeLine("\xE2\x80\xA8"), "\\u2028");
    EXPECT_EQ(SafeLine(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(SafeLine("caf\xE9.mov"), "caf\\xe9.mov");
    EXPECT_EQ(SafeLine("\xE4\xB8"), "\\xe4\\xb8");
    EXPECT_EQ(SafeLines("a\n\tb\x1b"), "a\n\tb\\x1b");
    EXPECT_EQ(ValidUTF8("a\n\xFF\x1b"), "a\n\\xff\x1b");
}

TEST(Json, IsValidWhateverTheBytes) {
    zonstory::Json document = zonstory::JsonDocument("test", 3);
    document["clip"] = zonstory::JsonString("caf\xE9\n\x1b.mov");
    const auto parsed = nlohmann::json::parse(zonstory::JsonText(document));
    EXPECT_EQ(parsed, (nlohmann::json{{"schema", "zonstory.test"}, {"version", 3}, {"clip", "caf\\xe9\n\x1b.mov"}}));
}

TEST(DisplayWidth, CountsCells) {
    EXPECT_EQ(DisplayWidth(""), 0U);
    EXPECT_EQ(DisplayWidth("ANN"), 3U);
    EXPECT_EQ(DisplayWidth("É"), 1U);
    EXPECT_EQ(DisplayWidth("E\xCC\x81"), 1U); // a letter and a combining accent
    EXPECT_EQ(DisplayWidth("医院"), 4U);
    EXPECT_EQ(DisplayWidth("밤"), 2U);
    EXPECT_EQ(DisplayWidth("🎬"), 2U);
    EXPECT_EQ(DisplayWidth("👩‍🚒"), 2U); // three code points, one picture
    EXPECT_EQ(DisplayWidth("❤️"), 2U);
    EXPECT_EQ(DisplayWidth("ночь"), 4U);
}

} // namespace

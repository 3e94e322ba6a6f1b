#include "text/ForeignText.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(ForeignText, ComesOutAsUTF8) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"Caf\xC3\xA9", "Caf\xC3\xA9"},
        {"\xEF\xBB\xBF"
         "Caf\xC3\xA9",
         "Caf\xC3\xA9"},
        {"Caf\xE9 \x80\x81", "Caf\xC3\xA9 \xE2\x82\xAC\xC2\x81"},
        {"\xFF\xFE\xE9\x00\x3D\xD8"s, "\xC3\xA9\xEF\xBF\xBD"}, // half a pair
        {"\xFE\xFF\x00\xE9\x41"s, "\xC3\xA9"},                 // half a unit
        {"a\0\xE9\0"s, "a\xC3\xA9"},
        {"\0a\0\xE9"s, "a\xC3\xA9"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(zonstory::ForeignToUTF8(bytes), text);
    }
}

TEST(ForeignText, GivesTheBytesBack) {
    std::string all = "\xFF";
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(zonstory::ToWindows1252(zonstory::ForeignToUTF8(all)), all);
    EXPECT_EQ(zonstory::ToWindows1252("\xE6\x97\xA5.mov"), "?.mov");
}

} // namespace

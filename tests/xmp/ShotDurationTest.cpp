#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::kDynamicMedia;
using support::ValueOf;

TEST(ShotDuration, IsStoredInSeconds) {
    // clang-format off
    const std::pair<UString, std::string> rows[] = {
        {u"1:30", "5400"}, {u"01:02:03", "3723"}, {u"90", "324000"}, {u"::5", "5"}, {u"1:2:3:4", "3723"},
        {u"1:-60:0", "0"}, {u"0:0:12s", "12"}, {u" 1: 2:", "3720"},
        {u"0:00:00", "(none)"}, {u"", "(none)"}, {u"a:b:c", "(none)"}, {u":::7", "(none)"},
        {u"600000", "-2134967296"}, {u"2147483647:2147483647:2147483647", "2147479987"}, {u"3000000000:0:1", "1"},
    };
    // clang-format on
    for (const auto& [text, seconds] : rows) {
        SXMPMeta xmp;
        EXPECT_TRUE(WriteShotDurationToXMP(text, xmp));
        EXPECT_EQ(ValueOf(GetShotDurationValueFromXMP, xmp), seconds) << zoncore::UTF16to8(text);
        EXPECT_EQ(ValueOf(GetShotDurationScaleFromXMP, xmp), seconds == "(none)" ? "(none)" : "1/1");
        EXPECT_TRUE(DeleteShotDurationFromXMP(xmp));
        EXPECT_FALSE(xmp.DoesPropertyExist(kDynamicMedia, "duration"));
    }
    SXMPMeta xmp;
    xmp.SetProperty(kDynamicMedia, "duration", "not a struct");
    EXPECT_FALSE(WriteShotDurationToXMP(u"1:30", xmp));
    EXPECT_EQ(ValueOf(GetShotDurationValueFromXMP, xmp), "(none)");
}

} // namespace

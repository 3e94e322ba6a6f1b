#include <gtest/gtest.h>

#include <zoncore/Localizer.h>

namespace {

TEST(Localizer, TranslatesByKeyAndFallsBackToEnglish) {
    zoncore::Localizer& localizer = zoncore::Localizer::Get();
    localizer.SetTranslations({{"$$$/x/Key", u"\u00DCbersetzt"}});
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/Key=a"), u"\u00DCbersetzt");
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/KeyToo=b = c"), u"b = c");
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/NoText"), u"$$$/x/NoText");
    localizer.SetTranslations({});
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/Key=a"), u"a");
}

} // namespace

#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::kDynamicMedia;
using support::kScript;
using support::ValueOf;

struct SimpleProperty {
    const char* schemaNS;
    const char* name;
    bool (*write)(const UString&, SXMPMeta&);
    bool (*read)(SXMPMeta&, XMP_OptionBits*, std::string*);
    bool (*remove)(SXMPMeta&);
    bool storesEmptyText;
    bool isStory; ///< Whether it makes a clip one that carries a story.
};

// clang-format off
const SimpleProperty kSimpleProperties[] = {
    {kScript, "sceneSetting", [](auto& text, auto& xmp) { return WriteSceneHeadingToXMP(text, {}, {}, xmp); },
        GetSceneSettingFromXMP, DeleteSceneHeadingFromXMP, false, true},
    {kDynamicMedia, "shotLocation", [](auto& text, auto& xmp) { return WriteSceneHeadingToXMP({}, text, {}, xmp); },
        GetShotLocationFromXMP, DeleteSceneHeadingFromXMP, false, true},
    {kScript, "sceneTimeOfDay", [](auto& text, auto& xmp) { return WriteSceneHeadingToXMP({}, {}, text, xmp); },
        GetSceneTimeOfDayFromXMP, DeleteSceneHeadingFromXMP, false, true},
    {kDynamicMedia, "scene", WriteSceneNumberToXMP, GetSceneNumberFromXMP, DeleteSceneNumberFromXMP, true, false},
    {kDynamicMedia, "shotName", WriteShotNameToXMP, GetShotNameFromXMP, DeleteShotNameFromXMP, false, false},
    {kScript, "action", WriteActionToXMP, GetActionFromXMP, DeleteActionFromXMP, false, true},
};
// clang-format on

TEST(SceneProperties, AreWrittenReadAndDeletedWhereTheyBelong) {
    for (const SimpleProperty& property : kSimpleProperties) {
        SCOPED_TRACE(property.name);
        SXMPMeta xmp;
        EXPECT_TRUE(property.remove(xmp));
        EXPECT_TRUE(property.write(u"", xmp));
        EXPECT_EQ(ValueOf(property.read, xmp), property.storesEmptyText ? "" : "(none)");

        EXPECT_TRUE(property.write(u"Caf\u00E9 \U0001F3AC\n2", xmp));
        std::string stored;
        XMP_OptionBits options = 0xFFFF;
        ASSERT_TRUE(xmp.GetProperty(property.schemaNS, property.name, &stored, &options));
        EXPECT_EQ(stored, "Caf\xC3\xA9 \xF0\x9F\x8E\xAC\n2");
        EXPECT_EQ(options, 0U);
        EXPECT_EQ(ValueOf(property.read, xmp), stored);
        EXPECT_EQ(HasAnyStoryRelatedMetadata(xmp), property.isStory);

        EXPECT_TRUE(property.write(u"", xmp));
        EXPECT_EQ(ValueOf(property.read, xmp), property.storesEmptyText ? "" : stored);
        EXPECT_TRUE(property.remove(xmp));
        EXPECT_FALSE(xmp.DoesPropertyExist(property.schemaNS, property.name));
    }
}

TEST(SceneProperties, ReportAToolkitFailureAsFalse) {
    for (const SimpleProperty& property : kSimpleProperties) {
        SCOPED_TRACE(property.name);
        SXMPMeta xmp;
        xmp.AppendArrayItem(property.schemaNS, property.name, kXMP_PropArrayIsOrdered, "not simple");
        EXPECT_FALSE(property.write(u"x", xmp));
        EXPECT_EQ(xmp.CountArrayItems(property.schemaNS, property.name), 1);

        SXMPMeta emptied = std::move(xmp);
        std::string untouched = "untouched";
        XMP_OptionBits options = 7;
        EXPECT_FALSE(property.read(xmp, &options, &untouched)); // the toolkit has no object any more
        EXPECT_FALSE(property.remove(xmp));
        EXPECT_EQ(untouched, "untouched");
        EXPECT_EQ(options, 7U);
    }
}

TEST(SceneProperties, TheShotNumberIsReadAndDeletedButNeverWritten) {
    SXMPMeta xmp;
    EXPECT_TRUE(WriteShotNumberToXMP(5, xmp));
    EXPECT_FALSE(xmp.DoesPropertyExist(kDynamicMedia, "shotNumber"));
    xmp.SetProperty(kDynamicMedia, "shotNumber", "5");
    EXPECT_EQ(ValueOf(GetShotNumberFromXMP, xmp), "5");
    EXPECT_TRUE(DeleteShotNumberFromXMP(xmp));
    EXPECT_EQ(ValueOf(GetShotNumberFromXMP, xmp), "(none)");
}

TEST(StoryPresence, AnEmptyTextAndASpeakerWithoutDialogueDoNotCount) {
    SXMPMeta xmp;
    xmp.SetProperty(kScript, "sceneSetting", "");
    WriteCharacterDialogueToXMP({{u"ANN", u""}}, xmp);
    EXPECT_FALSE(HasAnyStoryRelatedMetadata(xmp));
    WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}}, xmp);
    EXPECT_TRUE(HasAnyStoryRelatedMetadata(xmp));
}

} // namespace

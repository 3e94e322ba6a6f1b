#include <gtest/gtest.h>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;

TEST(StoryPresence, CountsOnlyWhatTheSceneSays) {
    SXMPMeta xmp;
    EXPECT_FALSE(HasAnyStoryRelatedMetadata(xmp));
    WriteSceneNumberToXMP(u"1", xmp);
    WriteShotNameToXMP(u"A", xmp);
    WriteShotDurationToXMP(u"1:0", xmp);
    xmp.SetProperty(zonmetadata::kDynamicMediaNamespaceURI, "shotNumber", "2");
    xmp.SetProperty(zonmetadata::kScriptNamespaceURI, "sceneSetting", "");
    WriteCharacterDialogueToXMP({{u"ANN", u""}}, xmp);
    EXPECT_FALSE(HasAnyStoryRelatedMetadata(xmp));
    const auto hasDataWith = [&](auto write) {
        SXMPMeta copy = xmp;
        write(copy);
        return HasAnyStoryRelatedMetadata(copy);
    };
    EXPECT_TRUE(hasDataWith([](SXMPMeta& copy) { WriteSceneHeadingToXMP(u"INT", u"", u"", copy); }));
    EXPECT_TRUE(hasDataWith([](SXMPMeta& copy) { WriteSceneHeadingToXMP(u"", u"BAR", u"", copy); }));
    EXPECT_TRUE(hasDataWith([](SXMPMeta& copy) { WriteSceneHeadingToXMP(u"", u"", u"DAY", copy); }));
    EXPECT_TRUE(hasDataWith([](SXMPMeta& copy) { WriteActionToXMP(u"Rain.", copy); }));
    EXPECT_TRUE(hasDataWith([](SXMPMeta& copy) { WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}}, copy); }));
}

} // namespace

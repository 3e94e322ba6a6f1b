#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;

// The simple properties that count are told in the tests SceneProperties.
TEST(StoryPresence, CountsOnlyWhatTheSceneSays) {
    SXMPMeta xmp;
    EXPECT_FALSE(HasAnyStoryRelatedMetadata(xmp));
    WriteShotDurationToXMP(u"1:0", xmp);
    xmp.SetProperty(support::kDynamicMedia, "shotNumber", "2");
    xmp.SetProperty(support::kScript, "sceneSetting", "");
    WriteCharacterDialogueToXMP({{u"ANN", u""}}, xmp);
    EXPECT_FALSE(HasAnyStoryRelatedMetadata(xmp));
    WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}}, xmp);
    EXPECT_TRUE(HasAnyStoryRelatedMetadata(xmp));
}

} // namespace

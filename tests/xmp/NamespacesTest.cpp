#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;

TEST(Namespaces, AreRegisteredUnderTheirPrefixesAndReachedByURI) {
    EXPECT_STREQ(kXMP_NS_SCRIPT_Prefix, "xmpScript");
    EXPECT_STREQ(kXMP_NS_DM_Prefix, "xmpDM");
    EXPECT_STREQ(kXMP_NS_DC_Prefix, "dc");
    const char* const usual = kXMP_NS_SCRIPT_Prefix;
    kXMP_NS_SCRIPT_Prefix = "screen";
    RegisterNamespaces();
    RegisterNamespaces();
    SXMPMeta xmp;
    EXPECT_TRUE(WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}}, xmp));
    EXPECT_TRUE(WriteShotDurationToXMP(u"0:0:1", xmp));
    EXPECT_EQ(support::DialogueOf(xmp), (std::vector<std::string>{"ANN: Hi."}));
    std::string packet;
    xmp.SerializeToBuffer(&packet, kXMP_OmitPacketWrapper, 0, "", "", 0);
    EXPECT_NE(packet.find("<xmpScript:character>"), std::string::npos) << packet;
    EXPECT_NE(packet.find("<xmpDM:scale>"), std::string::npos) << packet;

    kXMP_NS_SCRIPT_Prefix = "not a name";
    EXPECT_THROW(RegisterNamespaces(), XMP_Error);
    std::vector<CharacterDialogue> list = {{u"old", u"record"}};
    EXPECT_THROW(GetCharacterDialogueFromXMP(xmp, nullptr, list), XMP_Error);
    EXPECT_TRUE(list.empty());
    SXMPMeta bare;
    EXPECT_THROW(HasAnyStoryRelatedMetadata(bare), XMP_Error);
    kXMP_NS_SCRIPT_Prefix = usual;
}

} // namespace

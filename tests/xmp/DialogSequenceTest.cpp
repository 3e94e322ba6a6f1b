#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::DialogueOf;
using support::kScript;
using support::Lines;

constexpr char kArray[] = "dialogSequence";

std::vector<CharacterDialogue> Records(int count) {
    std::vector<CharacterDialogue> list;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        list.push_back({u"C" + zoncore::UTF8to16(number), u"\u00C4" + zoncore::UTF8to16(number)});
    }
    return list;
}

TEST(DialogSequence, IsAnOrderedArrayOfStructsAndGrowsAtItsEnd) {
    SXMPMeta xmp;
    EXPECT_TRUE(WriteCharacterDialogueToXMP({}, xmp));
    EXPECT_FALSE(xmp.DoesPropertyExist(kScript, kArray));
    WriteCharacterDialogueToXMP(Records(3), xmp);
    WriteCharacterDialogueToXMP(Records(2), xmp);
    EXPECT_EQ(DialogueOf(xmp), (std::vector<std::string>{"C0: Ä0", "C1: Ä1", "C2: Ä2", "C0: Ä0", "C1: Ä1"}));
    XMP_OptionBits options = 0;
    xmp.GetProperty(kScript, kArray, nullptr, &options);
    EXPECT_EQ(options & kXMP_PropCompositeMask, kXMP_PropValueIsArray | kXMP_PropArrayIsOrdered);
    xmp.GetProperty(kScript, "dialogSequence[5]", nullptr, &options);
    EXPECT_EQ(options & kXMP_PropCompositeMask, kXMP_PropValueIsStruct);
}

TEST(DialogSequence, IncompleteItemsAreFoundButGiveNoRecord) {
    SXMPMeta xmp;
    ASSERT_TRUE(WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}, {u"BOB", u""}, {u"", u"Lost"}, {u"CY", u"Bye."}}, xmp));
    EXPECT_EQ(xmp.CountArrayItems(kScript, kArray), 4);
    EXPECT_EQ(DialogueOf(xmp), (std::vector<std::string>{"ANN: Hi.", "CY: Bye."}));

    SXMPMeta half;
    half.AppendArrayItem(kScript, kArray, kXMP_PropArrayIsOrdered, nullptr, kXMP_PropValueIsStruct);
    std::vector<CharacterDialogue> list;
    XMP_OptionBits options = 99;
    EXPECT_FALSE(GetCharacterDialogueFromXMP(half, &options, list));
    EXPECT_EQ(options, 99U);
    half.SetStructField(kScript, "dialogSequence[1]", kScript, "character", "ANN");
    EXPECT_TRUE(GetCharacterDialogueFromXMP(half, &options, list));
    EXPECT_EQ(options, 0U);
    EXPECT_TRUE(list.empty());
}

TEST(DialogSequence, FailuresKeepWhatWasDoneBefore) {
    SXMPMeta xmp;
    EXPECT_FALSE(WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}, {u"BOB", u"\uFFFF"}, {u"CY", u"Bye."}}, xmp));
    EXPECT_EQ(xmp.CountArrayItems(kScript, kArray), 2);
    EXPECT_EQ(DialogueOf(xmp), (std::vector<std::string>{"ANN: Hi."}));

    SXMPMeta mixed;
    WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}}, mixed);
    mixed.AppendArrayItem(kScript, kArray, kXMP_PropArrayIsOrdered, "no struct");
    std::vector<CharacterDialogue> list = {{u"old", u"record"}};
    EXPECT_FALSE(GetCharacterDialogueFromXMP(mixed, nullptr, list));
    EXPECT_EQ(Lines(list), (std::vector<std::string>{"ANN: Hi."}));

    SXMPMeta simple;
    simple.SetProperty(kScript, kArray, "no array");
    EXPECT_FALSE(WriteCharacterDialogueToXMP(Records(1), simple));
    EXPECT_FALSE(GetCharacterDialogueFromXMP(simple, nullptr, list));
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(DeleteCharacterDialogueFromXMP(simple));
    EXPECT_FALSE(simple.DoesPropertyExist(kScript, kArray));
}

} // namespace

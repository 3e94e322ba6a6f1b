#include <gtest/gtest.h>

#include <zoncore/Localizer.h>
#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::Carried;
using support::kDynamicMedia;
using support::kScript;
using support::MakeScene;
using Strings = std::vector<std::string>;

const Strings kHeading = {"script:sceneSetting", "dm:shotLocation", "script:sceneTimeOfDay"};
const Strings kAction1 = {"script:action"};
const Strings kItem1 = {"script:dialogSequence[1]/xmpScript:character", "script:dialogSequence[1]/xmpScript:dialog"};
const Strings kArrayItself = {"script:dialogSequence"};

Strings operator+(Strings left, const Strings& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// What one call reported: the message in front when there is one, then the paths.
template <typename Call>
Strings Run(Call call) {
    std::vector<zonmetadata::Path> changed = {zonmetadata::PathForSchemaNameAndPropertyName("urn:host", "own")};
    std::string message;
    try {
        message = zoncore::UTF16to8(call(changed));
    } catch (const XMP_Error&) {
        message = "(XMP_Error)";
    }
    EXPECT_EQ(changed.at(0).PropertyPath(), "own");
    Strings result(message.empty() ? 0 : 1, message);
    for (std::size_t i = 1; i < changed.size(); ++i) {
        result.push_back((changed[i].SchemaNamespace() == kScript ? "script:" : "dm:") + changed[i].PropertyPath());
    }
    return result;
}

Strings Write(boost::intrusive_ptr<Scene> scene, SXMPMeta& xmp) {
    return Run([&](auto& changed) { return WriteSceneMetadataIntoXMP(scene, xmp, changed); });
}

Strings Clear(SXMPMeta& xmp) {
    return Run([&](auto& changed) { return ClearSceneMetadataFromXMP(xmp, changed); });
}

SXMPMeta WithDialogue() {
    SXMPMeta xmp;
    WriteCharacterDialogueToXMP({{u"OLD", u"Old."}}, xmp);
    return xmp;
}

TEST(WriteSceneMetadata, WhatTheSceneDoesNotSayStaysInTheClip) {
    SXMPMeta xmp;
    WriteSceneNumberToXMP(u"kept", xmp);
    const auto first = MakeScene(
        {{kSceneHeading, u"INT. HOUSE - NIGHT"}, {kAction, u"Rain."}, {kCharacter, u"ANN"}, {kDialog, u"Yes."}});
    EXPECT_EQ(Write(first, xmp), kHeading + kAction1 + kArrayItself + kItem1);
    EXPECT_EQ(Carried(xmp),
              (Strings{"setting INT", "location HOUSE", "time NIGHT", "number kept", "action Rain.", "ANN: Yes."}));
    EXPECT_EQ(Write(MakeScene({{kSceneHeading, u"EXT. GARDEN"}}), xmp), kHeading + kAction1 + kItem1);
    const Strings second = {"setting EXT", "location GARDEN", "time NIGHT", "number kept", "action Rain."};
    EXPECT_EQ(Carried(xmp), second);
    EXPECT_EQ(Write(MakeScene({}), xmp), kAction1);
    EXPECT_EQ(Carried(xmp), second);
}

TEST(WriteSceneMetadata, StopsAtTheFirstFailureAndKeepsWhatWasDone) {
    const auto scene = MakeScene(
        {{kSceneHeading, u"INT. HOUSE - NIGHT"}, {kAction, u"Rain."}, {kCharacter, u"ANN"}, {kDialog, u"Yes."}});
    SXMPMeta badHeading = WithDialogue();
    badHeading.AppendArrayItem(kDynamicMedia, "shotLocation", kXMP_PropArrayIsOrdered, "x");
    EXPECT_EQ(Write(scene, badHeading), Strings{"Error writing scene heading to XMP"});
    EXPECT_EQ(Carried(badHeading), (Strings{"setting INT", "location ", "OLD: Old."}));

    SXMPMeta badAction = WithDialogue();
    badAction.AppendArrayItem(kScript, "action", kXMP_PropArrayIsOrdered, "x");
    EXPECT_EQ(Write(scene, badAction), Strings{"Error writing action text to XMP"} + kHeading);
    EXPECT_EQ(Carried(badAction).back(), "OLD: Old.");

    SXMPMeta badDialogue = WithDialogue();
    EXPECT_EQ(Write(MakeScene({{kCharacter, u"ANN"}, {kDialog, u"\uFFFE"}}), badDialogue),
              Strings{"Error writing character dialogue to XMP"} + kAction1);

    SXMPMeta uncountable;
    uncountable.SetProperty(kScript, "dialogSequence", "no array");
    EXPECT_EQ(Write(scene, uncountable), Strings{"(XMP_Error)"} + kHeading + kAction1);
    EXPECT_EQ(Clear(uncountable), Strings{"(XMP_Error)"} + kHeading + kAction1);
    EXPECT_EQ(Carried(uncountable), Strings{});
}

TEST(ClearSceneMetadata, FailuresAreReportedInTheHostsLanguage) {
    SXMPMeta gone;
    const SXMPMeta taken = std::move(gone);
    EXPECT_EQ(Clear(gone), Strings{"Error deleting scene heading from XMP"});
    zoncore::Localizer::Get().SetTranslations({{"$$$/zonstoryparser/DeleteSceneHeadingError", u"nicht gel\u00F6scht"}});
    EXPECT_EQ(Clear(gone), Strings{"nicht gel\u00F6scht"});
    zoncore::Localizer::Get().SetTranslations({});
}

} // namespace

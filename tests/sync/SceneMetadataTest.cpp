#include <gtest/gtest.h>

#include <zoncore/Localizer.h>
#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::kDynamicMedia;
using support::kScript;
using support::MakeScene;
using support::ValueOf;
using Strings = std::vector<std::string>;

const Strings kHeading = {"script:sceneSetting", "dm:shotLocation", "script:sceneTimeOfDay"};
const Strings kAction1 = {"script:action"};
const Strings kArrayItself = {"script:dialogSequence"};

Strings Items(int first, int last) {
    Strings paths;
    for (int i = first; i <= last; ++i) {
        const std::string item = "script:dialogSequence[" + std::to_string(i) + "]/xmpScript:";
        paths.push_back(item + "character");
        paths.push_back(item + "dialog");
    }
    return paths;
}

Strings operator+(Strings left, const Strings& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// What one call returned and reported.
struct Result {
    UString message;
    Strings paths;
};

template <typename Call>
Result Run(Call call) {
    std::vector<zonmetadata::Path> changed = {zonmetadata::PathForSchemaNameAndPropertyName("urn:host", "own")};
    Result result;
    try {
        result.message = call(changed);
    } catch (const XMP_Error&) {
        result.message = u"(XMP_Error)";
    }
    EXPECT_EQ(changed.at(0).PropertyPath(), "own");
    for (std::size_t i = 1; i < changed.size(); ++i) {
        const bool isScript = changed[i].SchemaNamespace() == kScript;
        EXPECT_TRUE(isScript || changed[i].SchemaNamespace() == kDynamicMedia);
        result.paths.push_back((isScript ? "script:" : "dm:") + changed[i].PropertyPath());
    }
    return result;
}

Result Write(boost::intrusive_ptr<Scene> scene, SXMPMeta& xmp) {
    return Run([&](auto& changed) { return WriteSceneMetadataIntoXMP(scene, xmp, changed); });
}

Result Clear(SXMPMeta& xmp) {
    return Run([&](auto& changed) { return ClearSceneMetadataFromXMP(xmp, changed); });
}

SXMPMeta WithDialogue(int count) {
    SXMPMeta xmp;
    WriteCharacterDialogueToXMP(std::vector<CharacterDialogue>(static_cast<std::size_t>(count), {u"OLD", u"Old."}),
                                xmp);
    return xmp;
}

boost::intrusive_ptr<Scene> Conversation(int speeches) {
    auto scene = MakeScene({});
    for (int i = 0; i < speeches; ++i) {
        scene->paragraphs.push_back(support::MakeParagraph(kCharacter, {u"ANN"}));
        scene->paragraphs.push_back(support::MakeParagraph(kDialog, {u"Yes."}));
    }
    return scene;
}

TEST(WriteSceneMetadata, WritesTheSceneAndReportsInOrder) {
    SXMPMeta xmp;
    WriteSceneNumberToXMP(u"kept", xmp);
    const auto scene = MakeScene({{kDialog, u"Hello"},
                                  {kSceneHeading, u"INT. HOUSE - NIGHT"},
                                  {kAction, u"Rain."},
                                  {kCharacter, u"BOB"},
                                  {kDialog, u"Hi."},
                                  {kCharacter, u"ANN"},
                                  {kDialog, u"Yes."},
                                  {kAction, u"Stops."}});
    const Result result = Write(scene, xmp);
    EXPECT_EQ(result.message, u"");
    EXPECT_EQ(result.paths, kHeading + kAction1 + kArrayItself + Items(1, 2));
    EXPECT_EQ(ValueOf(GetSceneSettingFromXMP, xmp), "INT");
    EXPECT_EQ(ValueOf(GetShotLocationFromXMP, xmp), "HOUSE");
    EXPECT_EQ(ValueOf(GetSceneTimeOfDayFromXMP, xmp), "NIGHT");
    EXPECT_EQ(ValueOf(GetActionFromXMP, xmp), "Rain.  Stops.");
    EXPECT_EQ(support::DialogueOf(xmp), (Strings{"BOB: Hello  Hi.", "ANN: Yes."}));
    EXPECT_EQ(ValueOf(GetSceneNumberFromXMP, xmp), "kept");
}

TEST(WriteSceneMetadata, ReportsEveryItemThatWasOrIs) {
    struct Row {
        int before, after;
        Strings paths;
    };
    const Row rows[] = {
        {0, 0, {}},          {0, 2, kArrayItself + Items(1, 2)},
        {2, 2, Items(1, 2)}, {3, 1, Items(1, 3)},
        {3, 0, Items(1, 3)}, {1, 11, Items(1, 11)},
    };
    for (const Row& row : rows) {
        SXMPMeta xmp = WithDialogue(row.before);
        EXPECT_EQ(Write(Conversation(row.after), xmp).paths, kAction1 + row.paths) << row.before << ' ' << row.after;
        EXPECT_EQ(support::DialogueOf(xmp), Strings(static_cast<std::size_t>(row.after), "ANN: Yes."));
    }
}

TEST(WriteSceneMetadata, WhatTheSceneDoesNotSayStaysInTheClip) {
    SXMPMeta xmp;
    Write(MakeScene({{kSceneHeading, u"INT. HOUSE - NIGHT"}, {kAction, u"Rain."}}), xmp);
    EXPECT_EQ(Write(MakeScene({{kSceneHeading, u"EXT. GARDEN"}}), xmp).paths, kHeading + kAction1);
    EXPECT_EQ(ValueOf(GetSceneSettingFromXMP, xmp), "EXT");
    EXPECT_EQ(ValueOf(GetSceneTimeOfDayFromXMP, xmp), "NIGHT");
    EXPECT_EQ(ValueOf(GetActionFromXMP, xmp), "Rain.");
    EXPECT_EQ(Write(MakeScene({}), xmp).paths, kAction1);
    EXPECT_EQ(ValueOf(GetShotLocationFromXMP, xmp), "GARDEN");
}

TEST(WriteSceneMetadata, StopsAtTheFirstFailureAndKeepsWhatWasDone) {
    const auto scene = MakeScene(
        {{kSceneHeading, u"INT. HOUSE - NIGHT"}, {kAction, u"Rain."}, {kCharacter, u"ANN"}, {kDialog, u"Yes."}});
    SXMPMeta badHeading = WithDialogue(1);
    badHeading.AppendArrayItem(kDynamicMedia, "shotLocation", kXMP_PropArrayIsOrdered, "x");
    Result result = Write(scene, badHeading);
    EXPECT_EQ(result.message, u"Error writing scene heading to XMP");
    EXPECT_EQ(result.paths, Strings{});
    EXPECT_EQ(ValueOf(GetSceneSettingFromXMP, badHeading), "INT");
    EXPECT_EQ(ValueOf(GetActionFromXMP, badHeading), "(none)");
    EXPECT_EQ(support::DialogueOf(badHeading), Strings{"OLD: Old."});

    SXMPMeta badAction = WithDialogue(1);
    badAction.AppendArrayItem(kScript, "action", kXMP_PropArrayIsOrdered, "x");
    result = Write(scene, badAction);
    EXPECT_EQ(result.message, u"Error writing action text to XMP");
    EXPECT_EQ(result.paths, kHeading);
    EXPECT_EQ(support::DialogueOf(badAction), Strings{"OLD: Old."});

    SXMPMeta badDialogue = WithDialogue(1);
    result = Write(MakeScene({{kCharacter, u"ANN"}, {kDialog, u"\uFFFE"}}), badDialogue);
    EXPECT_EQ(result.message, u"Error writing character dialogue to XMP");
    EXPECT_EQ(result.paths, kAction1);

    SXMPMeta uncountable;
    uncountable.SetProperty(kScript, "dialogSequence", "no array");
    result = Write(scene, uncountable);
    EXPECT_EQ(result.message, u"(XMP_Error)");
    EXPECT_EQ(result.paths, kHeading + kAction1);
    EXPECT_EQ(ValueOf(GetActionFromXMP, uncountable), "Rain.");
}

TEST(ClearSceneMetadata, RemovesWhatWritingPutsInAndNothingElse) {
    SXMPMeta xmp = WithDialogue(2);
    WriteSceneHeadingToXMP(u"INT", u"BAR", u"DAY", xmp);
    WriteActionToXMP(u"Rain.", xmp);
    WriteSceneNumberToXMP(u"1", xmp);
    WriteShotNameToXMP(u"A", xmp);
    WriteShotDurationToXMP(u"1:0", xmp);
    xmp.SetProperty(kDynamicMedia, "shotNumber", "2");

    Result result = Clear(xmp);
    EXPECT_EQ(result.message, u"");
    EXPECT_EQ(result.paths, kHeading + kAction1 + Items(1, 2));
    EXPECT_FALSE(HasAnyStoryRelatedMetadata(xmp));
    EXPECT_FALSE(xmp.DoesPropertyExist(kScript, "dialogSequence"));
    EXPECT_EQ(ValueOf(GetSceneNumberFromXMP, xmp), "1");
    EXPECT_EQ(ValueOf(GetShotNameFromXMP, xmp), "A");
    EXPECT_EQ(ValueOf(GetShotNumberFromXMP, xmp), "2");
    EXPECT_EQ(ValueOf(GetShotDurationValueFromXMP, xmp), "3600");
    EXPECT_EQ(Clear(xmp).paths, kHeading + kAction1);
}

TEST(ClearSceneMetadata, FailuresAreReportedInTheHostsLanguage) {
    SXMPMeta gone;
    const SXMPMeta taken = std::move(gone);
    zoncore::Localizer::Get().SetTranslations(
        {{"$$$/zonstoryparser/DeleteSceneHeadingError", u"Szenenkopf nicht gel\u00F6scht"}});
    Result result = Clear(gone); // the toolkit has no object any more
    zoncore::Localizer::Get().SetTranslations({});
    EXPECT_EQ(result.message, u"Szenenkopf nicht gel\u00F6scht");
    EXPECT_EQ(result.paths, Strings{});
    EXPECT_EQ(Clear(gone).message, u"Error deleting scene heading from XMP");

    SXMPMeta uncountable;
    uncountable.SetProperty(kScript, "dialogSequence", "no array");
    WriteActionToXMP(u"Rain.", uncountable);
    result = Clear(uncountable);
    EXPECT_EQ(result.message, u"(XMP_Error)");
    EXPECT_EQ(result.paths, kHeading + kAction1);
    EXPECT_EQ(ValueOf(GetActionFromXMP, uncountable), "(none)");
}

} // namespace

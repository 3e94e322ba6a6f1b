#include "SceneInvariants.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <zonmetadata/SchemaNamespaces.h>

#include "Require.h"
#include "Said.h"

namespace fuzz {

using namespace zonstoryparser;

namespace {

using Paths = std::vector<zonmetadata::Path>;
using Reader = bool (*)(SXMPMeta&, XMP_OptionBits*, std::string*);

constexpr char kArray[] = "dialogSequence";

struct SimpleProperty {
    const char* schemaNS;
    const char* name;
    Reader read;
};

const SimpleProperty kWritten[] = {
    {zonmetadata::kScriptNamespaceURI, "sceneSetting", GetSceneSettingFromXMP},
    {zonmetadata::kDynamicMediaNamespaceURI, "shotLocation", GetShotLocationFromXMP},
    {zonmetadata::kScriptNamespaceURI, "sceneTimeOfDay", GetSceneTimeOfDayFromXMP},
    {zonmetadata::kScriptNamespaceURI, "action", GetActionFromXMP},
};

// What a scene is never written into.
const SimpleProperty kOthers[] = {
    {zonmetadata::kScriptNamespaceURI, "sceneNumber", GetSceneNumberFromXMP},
    {zonmetadata::kDynamicMediaNamespaceURI, "shotName", GetShotNameFromXMP},
    {zonmetadata::kDynamicMediaNamespaceURI, "shotNumber", GetShotNumberFromXMP},
    {zonmetadata::kDynamicMediaNamespaceURI, "duration/scale", GetShotDurationScaleFromXMP},
    {zonmetadata::kDynamicMediaNamespaceURI, "duration/value", GetShotDurationValueFromXMP},
};

using Values = std::map<std::string, std::string>;

XMP_Index CountDialogue(const SXMPMeta& xmp) {
    return xmp.CountArrayItems(zonmetadata::kScriptNamespaceURI, kArray);
}

// What the properties of a scene and those beside them say: by path, in one text each.
Values Snapshot(SXMPMeta& xmp) {
    Values values;
    const auto add = [&](const SimpleProperty& property) {
        std::string value;
        if (property.read(xmp, nullptr, &value)) {
            values[property.name] = value;
        }
    };
    std::for_each(std::begin(kWritten), std::end(kWritten), add);
    std::for_each(std::begin(kOthers), std::end(kOthers), add);
    const XMP_Index count = CountDialogue(xmp);
    for (XMP_Index index = 1; index <= count; ++index) {
        std::string path;
        SXMPUtils::ComposeArrayItemPath(zonmetadata::kScriptNamespaceURI, kArray, index, &path);
        for (const char* const field : {"character", "dialog"}) {
            std::string value;
            if (xmp.GetStructField(zonmetadata::kScriptNamespaceURI, path.c_str(), zonmetadata::kScriptNamespaceURI,
                                   field, &value, nullptr)) {
                values[path + "/xmpScript:" + field] = value;
            }
        }
    }
    return values;
}

void RequireEveryDifferenceNamed(const Values& before, const Values& after, const Paths& changed) {
    std::set<std::string> named;
    for (const zonmetadata::Path& path : changed) {
        named.insert(path.PropertyPath());
    }
    for (const auto& [path, value] : before) {
        const auto found = after.find(path);
        REQUIRE((found != after.end() && found->second == value) || named.count(path) == 1);
    }
    for (const auto& [path, value] : after) {
        REQUIRE(before.count(path) == 1 || named.count(path) == 1);
    }
}

// The whole list, in its order: an item is named by its fields alone, the array only when it comes into being.
void RequirePaths(const Paths& changed, bool hasHeading, XMP_Index before, XMP_Index after) {
    Paths expected;
    for (const SimpleProperty& property : kWritten) {
        if (hasHeading || property.read == GetActionFromXMP) {
            expected.push_back(zonmetadata::PathForSchemaNameAndPropertyName(property.schemaNS, property.name));
        }
    }
    const zonmetadata::Path array =
        zonmetadata::PathForSchemaNameAndPropertyName(zonmetadata::kScriptNamespaceURI, kArray);
    if (before == 0 && after > 0) {
        expected.push_back(array);
    }
    for (XMP_Index index = 1; index <= std::max(before, after); ++index) {
        const zonmetadata::Path item = zonmetadata::CreatePathFromArrayItem(array, index);
        expected.push_back(zonmetadata::PathBeneath(item, "/xmpScript:character"));
        expected.push_back(zonmetadata::PathBeneath(item, "/xmpScript:dialog"));
    }
    REQUIRE(changed == expected);
}

// A packet is made where there is an identity and something to say, and says it; it also says the same when it has
// been through another packet. Were another XML parser to take the place of the toolkit's own, packets would read as
// empty, without an error.
void CheckPacket(const boost::intrusive_ptr<Scene>& scene, const Said& said) {
    std::vector<ShotXMP> shots;
    REQUIRE(GetSceneXMP(nullptr, scene, 1, shots));
    REQUIRE(shots.size() == (said.firstID.empty() || said.IsNothing() ? 0 : 1));
    for (const ShotXMP& shot : shots) {
        REQUIRE(shot.shotID == said.firstID);
        SXMPMeta parsed(shot.xmpPacket.data(), shot.xmpPacket.size());
        if (scene->sceneNumber.find_first_of(u"\uFFFE\uFFFF") == UString::npos) {
            std::string number;
            REQUIRE(GetSceneNumberFromXMP(parsed, nullptr, &number));
            REQUIRE(number == (scene->sceneNumber.empty() ? "001" : AsStored(scene->sceneNumber)));
        }
        if (IsStorable(said)) {
            RequireReadsBack(said, parsed);
        }
        std::string packet;
        parsed.SerializeToBuffer(&packet, kXMP_UseCompactFormat, 0, "", "", 0);
        SXMPMeta again(packet.data(), packet.size());
        REQUIRE(Snapshot(again) == Snapshot(parsed));
    }
}

void CheckWrite(const boost::intrusive_ptr<Scene>& scene, const Said& said, SXMPMeta& xmp) {
    const Values before = Snapshot(xmp);
    const XMP_Index count = CountDialogue(xmp);
    Paths changed;
    if (!WriteSceneMetadataIntoXMP(scene, xmp, changed).empty()) {
        return;
    }
    const Values after = Snapshot(xmp);
    RequireEveryDifferenceNamed(before, after, changed);
    RequirePaths(changed, !said.heading.empty(), count, static_cast<XMP_Index>(said.dialogue.size()));
    RequireReadsBack(said, xmp);
    const auto isSame = [&](const char* name) {
        return before.count(name) == after.count(name) &&
               (before.count(name) == 0 || before.at(name) == after.at(name));
    };
    REQUIRE(!said.action.empty() || isSame("action")); // named and yet the old one
    changed.clear();
    REQUIRE(WriteSceneMetadataIntoXMP(scene, xmp, changed).empty());
    REQUIRE(Snapshot(xmp) == after);
}

void CheckClear(SXMPMeta& xmp) {
    for (int round = 0; round < 2; ++round) { // the second finds no dialogue to name
        const Values before = Snapshot(xmp);
        const XMP_Index count = CountDialogue(xmp);
        REQUIRE(round == 0 || count == 0);
        Paths changed;
        REQUIRE(ClearSceneMetadataFromXMP(xmp, changed).empty());
        RequireEveryDifferenceNamed(before, Snapshot(xmp), changed);
        RequirePaths(changed, true, count, 0); // the array goes without being named
        REQUIRE(!HasAnyStoryRelatedMetadata(xmp));
    }
}

} // namespace

void CheckScene(const boost::intrusive_ptr<Scene>& scene, SXMPMeta& xmp) {
    const Said said = WhatIsSaid(*scene);
    CheckPacket(scene, said);
    CheckWrite(scene, said, xmp);
    CheckClear(xmp);
}

void CheckStory(const boost::intrusive_ptr<Talewright>& story) {
    if (!story || !story->document) {
        return;
    }
    const Document& document = *story->document;
    std::vector<boost::intrusive_ptr<Section>> sections;
    for (const auto& stream : {document.header, document.body, document.footer}) {
        sections.push_back(stream ? stream->section : nullptr);
    }
    for (const auto& comments : document.commentStreams) {
        sections.push_back(comments->section);
    }
    SXMPMeta xmp;
    for (const auto& section : sections) {
        for (std::size_t i = 0; section && i < section->scenes.size(); ++i) {
            CheckScene(section->scenes[i], xmp);
        }
    }
}

void CheckAccessors(SXMPMeta& xmp) {
    std::string value;
    XMP_OptionBits options = 0;
    std::vector<CharacterDialogue> dialogue;
    for (int round = 0; round < 2; ++round) {
        for (const SimpleProperty& property : kWritten) {
            property.read(xmp, &options, &value);
        }
        for (const SimpleProperty& property : kOthers) {
            property.read(xmp, &options, &value);
        }
        GetCharacterDialogueFromXMP(xmp, &options, dialogue);
        HasAnyStoryRelatedMetadata(xmp);
        WriteSceneHeadingToXMP(u"INT", u"HOUSE", u"NIGHT", xmp);
        WriteSceneNumberToXMP(u"", xmp);
        WriteShotNameToXMP(u"A", xmp);
        WriteShotNumberToXMP(1, xmp);
        WriteShotDurationToXMP(u"1:30", xmp);
        WriteActionToXMP(u"Rain.", xmp);
        WriteCharacterDialogueToXMP({{u"ANN", u"Hi."}, {u"", u""}}, xmp);
        for (const auto remove :
             {DeleteSceneHeadingFromXMP, DeleteSceneNumberFromXMP, DeleteShotNameFromXMP, DeleteShotNumberFromXMP,
              DeleteShotDurationFromXMP, DeleteActionFromXMP, DeleteCharacterDialogueFromXMP}) {
            REQUIRE(remove(xmp));
        }
        REQUIRE(!HasAnyStoryRelatedMetadata(xmp));
    }
}

} // namespace fuzz

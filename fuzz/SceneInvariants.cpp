#include "SceneInvariants.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/SceneContent.h>

#include "Require.h"

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

// As XMP keeps a text: control characters become spaces on their way.
std::string AsStored(const UString& text) {
    std::string stored = zoncore::UTF16to8(text);
    for (char& byte : stored) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') || value == 0x7F) {
            byte = ' ';
        }
    }
    return stored;
}

void AddDialogue(const std::vector<CharacterDialogue>& dialogues, Values& values) {
    for (const CharacterDialogue& one : dialogues) {
        values[kArray] += AsStored(one.character) + '\0' + AsStored(one.dialogue) + '\0';
    }
}

// What the properties of a scene and those beside them say.
Values ValuesOf(SXMPMeta& xmp) {
    Values values;
    const auto add = [&](const SimpleProperty& property) {
        std::string value;
        if (property.read(xmp, nullptr, &value)) {
            values[property.name] = value;
        }
    };
    std::for_each(std::begin(kWritten), std::end(kWritten), add);
    std::for_each(std::begin(kOthers), std::end(kOthers), add);
    std::vector<CharacterDialogue> dialogues;
    GetCharacterDialogueFromXMP(xmp, nullptr, dialogues);
    AddDialogue(dialogues, values);
    return values;
}

// What stands there once `said` was written where `values` stood: the scene's own dialogue, and what else it says.
Values Overwritten(Values values, const SceneContent& said) {
    const UString* const texts[] = {&said.setting, &said.location, &said.timeOfDay, &said.action};
    for (std::size_t index = 0; index < std::size(texts); ++index) {
        if (!texts[index]->empty()) {
            values[kWritten[index].name] = AsStored(*texts[index]);
        }
    }
    values.erase(kArray);
    AddDialogue(said.dialogues, values);
    return values;
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

// Whether XMP takes all of it.
bool IsStorable(const SceneContent& said) {
    const auto isStorable = [](const UString& text) { return text.find_first_of(u"\uFFFE\uFFFF") == UString::npos; };
    return isStorable(said.heading) && isStorable(said.action) &&
           std::all_of(said.dialogues.begin(), said.dialogues.end(), [&](const CharacterDialogue& one) {
               return isStorable(one.character) && isStorable(one.dialogue);
           });
}

// A packet is made where there is an identity and something to say, and says it; it also says the same when it has
// been through another packet. Were another XML parser to take the place of the toolkit's own, packets would read as
// empty, without an error.
void CheckPacket(const boost::intrusive_ptr<Scene>& scene, const SceneContent& said) {
    std::vector<ShotXMP> shots;
    REQUIRE(GetSceneXMP(nullptr, scene, 1, shots));
    REQUIRE(shots.size() == (WhyNoPacket(*scene) == NoPacketReason::None ? 1 : 0));
    for (const ShotXMP& shot : shots) {
        REQUIRE(shot.shotID == said.firstParagraphID);
        SXMPMeta parsed(shot.xmpPacket.data(), shot.xmpPacket.size());
        if (scene->sceneNumber.find_first_of(u"\uFFFE\uFFFF") == UString::npos) {
            std::string number;
            REQUIRE(GetSceneNumberFromXMP(parsed, nullptr, &number));
            REQUIRE(number == (scene->sceneNumber.empty() ? "001" : AsStored(scene->sceneNumber)));
        }
        if (IsStorable(said)) {
            REQUIRE(Overwritten(ValuesOf(parsed), said) == ValuesOf(parsed));
        }
        std::string packet;
        parsed.SerializeToBuffer(&packet, kXMP_UseCompactFormat, 0, "", "", 0);
        SXMPMeta again(packet.data(), packet.size());
        REQUIRE(ValuesOf(again) == ValuesOf(parsed));
    }
}

void CheckWrite(const boost::intrusive_ptr<Scene>& scene, const SceneContent& said, SXMPMeta& xmp) {
    const Values expected = Overwritten(ValuesOf(xmp), said);
    for (int round = 0; round < 2; ++round) { // the second changes nothing
        const XMP_Index count = CountDialogue(xmp);
        Paths changed;
        if (!WriteSceneMetadataIntoXMP(scene, xmp, changed).empty()) {
            REQUIRE(round == 0);
            return;
        }
        RequirePaths(changed, !said.heading.empty(), count, static_cast<XMP_Index>(said.dialogues.size()));
        REQUIRE(CountDialogue(xmp) == static_cast<XMP_Index>(said.dialogues.size()));
        REQUIRE(ValuesOf(xmp) == expected);
    }
}

void CheckClear(SXMPMeta& xmp) {
    for (int round = 0; round < 2; ++round) { // the second finds no dialogue to name
        Values expected = ValuesOf(xmp);
        expected.erase(kArray);
        for (const SimpleProperty& property : kWritten) {
            expected.erase(property.name);
        }
        const XMP_Index count = CountDialogue(xmp);
        REQUIRE(round == 0 || count == 0);
        Paths changed;
        REQUIRE(ClearSceneMetadataFromXMP(xmp, changed).empty());
        REQUIRE(ValuesOf(xmp) == expected);
        RequirePaths(changed, true, count, 0); // the array goes without being named
        REQUIRE(!xmp.DoesPropertyExist(zonmetadata::kScriptNamespaceURI, kArray));
        REQUIRE(!HasAnyStoryRelatedMetadata(xmp));
    }
}

} // namespace

void CheckScene(const boost::intrusive_ptr<Scene>& scene, SXMPMeta& xmp) {
    const SceneContent said = GatherSceneContent(*scene);
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

#include "SceneInvariants.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include <zonmetadata/SchemaNamespaces.h>

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

constexpr Reader kOtherReaders[] = {GetSceneNumberFromXMP, GetShotNameFromXMP, GetShotNumberFromXMP,
                                    GetShotDurationScaleFromXMP, GetShotDurationValueFromXMP};

// Control characters become spaces on their way into XMP.
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

// What the properties that a scene is written into say: by path, in one text each.
std::map<std::string, std::string> Snapshot(SXMPMeta& xmp) {
    std::map<std::string, std::string> values;
    for (const SimpleProperty& property : kWritten) {
        std::string value;
        if (property.read(xmp, nullptr, &value)) {
            values[property.name] = value;
        }
    }
    const XMP_Index count = xmp.CountArrayItems(zonmetadata::kScriptNamespaceURI, kArray);
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

void RequireEveryDifferenceNamed(const std::map<std::string, std::string>& before,
                                 const std::map<std::string, std::string>& after, const Paths& changed) {
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

// The dialogue and action that the scene's paragraphs say, by the exported pieces alone.
struct Said {
    UString action;
    std::vector<CharacterDialogue> dialogue;
};

Said WhatIsSaid(const Scene& scene) {
    Said said;
    UString character;
    UString dialogue;
    for (const auto& paragraph : scene.paragraphs) {
        if (paragraph->element == kCharacter) {
            PushCharacterDialogue(character, dialogue, said.dialogue);
            GetTextRuns(paragraph, character);
        } else if (paragraph->element == kDialog) {
            GetTextRuns(paragraph, dialogue);
        } else if (paragraph->element == kAction) {
            GetTextRuns(paragraph, said.action);
        }
    }
    PushCharacterDialogue(character, dialogue, said.dialogue);
    return said;
}

void RequireReadsBack(const Said& said, SXMPMeta& xmp) {
    std::string action;
    if (!said.action.empty()) {
        REQUIRE(GetActionFromXMP(xmp, nullptr, &action) && action == AsStored(said.action));
    }
    std::vector<CharacterDialogue> dialogue;
    REQUIRE(GetCharacterDialogueFromXMP(xmp, nullptr, dialogue) == !said.dialogue.empty());
    REQUIRE(dialogue.size() == said.dialogue.size());
    for (std::size_t i = 0; i < dialogue.size(); ++i) {
        REQUIRE(zoncore::UTF16to8(dialogue[i].character) == AsStored(said.dialogue[i].character));
        REQUIRE(zoncore::UTF16to8(dialogue[i].dialogue) == AsStored(said.dialogue[i].dialogue));
    }
}

void CheckPacket(const boost::intrusive_ptr<Scene>& scene) {
    std::vector<ShotXMP> shots;
    REQUIRE(GetSceneXMP(nullptr, scene, 1, shots));
    REQUIRE(shots.size() <= 1);
    for (const ShotXMP& shot : shots) {
        SXMPMeta parsed(shot.xmpPacket.data(), shot.xmpPacket.size());
        // The scene number is in every packet. Were another XML parser to take the place of the toolkit's own, packets
        // would read as empty, without an error.
        if (scene->sceneNumber.find_first_of(u"\uFFFE\uFFFF") == UString::npos) {
            std::string number;
            REQUIRE(GetSceneNumberFromXMP(parsed, nullptr, &number) && !number.empty());
        }
        SXMPMeta copy = parsed;
        REQUIRE(Snapshot(copy) == Snapshot(parsed));
    }
}

} // namespace

void CheckScene(const boost::intrusive_ptr<Scene>& scene, SXMPMeta& xmp) {
    CheckPacket(scene);
    const auto before = Snapshot(xmp);
    Paths changed;
    const UString problem = WriteSceneMetadataIntoXMP(scene, xmp, changed);
    if (problem.empty()) {
        RequireEveryDifferenceNamed(before, Snapshot(xmp), changed);
        RequireReadsBack(WhatIsSaid(*scene), xmp);
    }
    const auto written = Snapshot(xmp);
    changed.clear();
    REQUIRE(ClearSceneMetadataFromXMP(xmp, changed).empty());
    RequireEveryDifferenceNamed(written, Snapshot(xmp), changed);
    REQUIRE(!HasAnyStoryRelatedMetadata(xmp));
    changed.clear();
    REQUIRE(ClearSceneMetadataFromXMP(xmp, changed).empty());
    REQUIRE(changed.size() == 4);
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
        for (const Reader read : kOtherReaders) {
            read(xmp, &options, &value);
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

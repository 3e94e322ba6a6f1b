#include "GeneratedStory.h"

#include <zonstoryparser/Story.h>

#include "StoryGenerator.h"

namespace bench {

namespace {

std::string ValueOf(bool (*read)(SXMPMeta&, XMP_OptionBits*, std::string*), SXMPMeta& xmp) {
    std::string value;
    read(xmp, nullptr, &value);
    return value;
}

// From the library's own packet, so that the floor writes exactly the same texts.
DirectScene Texts(const boost::intrusive_ptr<zonstoryparser::Scene>& scene) {
    std::vector<zonstoryparser::ShotXMP> shots;
    zonstoryparser::GetSceneXMP(nullptr, scene, 1, shots);
    const std::string& packet = shots.at(0).xmpPacket;
    SXMPMeta xmp(packet.data(), packet.size());
    DirectScene texts;
    texts.setting = ValueOf(zonstoryparser::GetSceneSettingFromXMP, xmp);
    texts.location = ValueOf(zonstoryparser::GetShotLocationFromXMP, xmp);
    texts.timeOfDay = ValueOf(zonstoryparser::GetSceneTimeOfDayFromXMP, xmp);
    texts.shotName = ValueOf(zonstoryparser::GetShotNameFromXMP, xmp);
    texts.sceneNumber = ValueOf(zonstoryparser::GetSceneNumberFromXMP, xmp);
    texts.seconds = ValueOf(zonstoryparser::GetShotDurationValueFromXMP, xmp);
    texts.action = ValueOf(zonstoryparser::GetActionFromXMP, xmp);
    std::vector<zonstoryparser::CharacterDialogue> dialogue;
    zonstoryparser::GetCharacterDialogueFromXMP(xmp, nullptr, dialogue);
    for (const zonstoryparser::CharacterDialogue& record : dialogue) {
        texts.dialogue.emplace_back(zoncore::UTF16to8(record.character), zoncore::UTF16to8(record.dialogue));
    }
    return texts;
}

} // namespace

GeneratedStory::GeneratedStory(std::size_t scenes)
    : story(zonscreenplay::ReadScreenplayFromMemory(StoryGenerator().OfScenes(scenes), "generated")) {
    direct.reserve(scenes);
    for (const auto& scene : Scenes()) {
        direct.push_back(Texts(scene));
    }
}

const std::vector<boost::intrusive_ptr<zonstoryparser::Scene>>& GeneratedStory::Scenes() const {
    return story.root->document->body->section->scenes;
}

} // namespace bench

#include "commands/ClipScene.h"

#include <utility>

#include <zonstoryparser/Story.h>

namespace zonstory {

namespace {

using Reader = bool (*)(SXMPMeta&, XMP_OptionBits*, std::string*);

struct Field {
    Reader read;
    std::string ClipScene::*member;
};

constexpr Field kFields[] = {
    {zonstoryparser::GetSceneNumberFromXMP, &ClipScene::scene},
    {zonstoryparser::GetSceneSettingFromXMP, &ClipScene::setting},
    {zonstoryparser::GetShotLocationFromXMP, &ClipScene::location},
    {zonstoryparser::GetSceneTimeOfDayFromXMP, &ClipScene::timeOfDay},
    {zonstoryparser::GetShotNameFromXMP, &ClipScene::shotName},
    {zonstoryparser::GetShotNumberFromXMP, &ClipScene::shotNumber},
    {zonstoryparser::GetShotDurationValueFromXMP, &ClipScene::durationValue},
    {zonstoryparser::GetShotDurationScaleFromXMP, &ClipScene::durationScale},
    {zonstoryparser::GetActionFromXMP, &ClipScene::action},
};

} // namespace

ClipScene ReadClipScene(const std::filesystem::path& clip, const ClipOptions& options) {
    ClipContents contents = ReadClip(clip, options);
    ClipScene scene;
    scene.clip = clip.string();
    scene.target = contents.target;
    scene.file = contents.file.string();
    for (const Field& field : kFields) {
        field.read(contents.xmp, nullptr, &(scene.*field.member));
    }
    std::vector<zonstoryparser::CharacterDialogue> dialogues;
    zonstoryparser::GetCharacterDialogueFromXMP(contents.xmp, nullptr, dialogues);
    for (const auto& [character, dialogue] : dialogues) {
        scene.dialogue.push_back({zoncore::UTF16to8(character), zoncore::UTF16to8(dialogue)});
    }
    scene.script = ReadScriptReference(contents.xmp);
    scene.notes = std::move(contents.notes);
    return scene;
}

} // namespace zonstory

#include "commands/ClipScene.h"

#include <utility>

#include <zonstoryparser/Story.h>

namespace zonstory {

namespace {

using Reader = bool (*)(SXMPMeta&, XMP_OptionBits*, std::string*);

struct Field {
    Reader read;
    std::string ClipScene::*member;
    bool isOfScene; ///< Else it is told by whichever of a clip's two places has it.
};

constexpr Field kFields[] = {
    {zonstoryparser::GetSceneNumberFromXMP, &ClipScene::scene, true},
    {zonstoryparser::GetSceneSettingFromXMP, &ClipScene::setting, true},
    {zonstoryparser::GetShotLocationFromXMP, &ClipScene::location, true},
    {zonstoryparser::GetSceneTimeOfDayFromXMP, &ClipScene::timeOfDay, true},
    {zonstoryparser::GetShotNameFromXMP, &ClipScene::shotName, false},
    {zonstoryparser::GetShotNumberFromXMP, &ClipScene::shotNumber, false},
    {zonstoryparser::GetShotDurationValueFromXMP, &ClipScene::durationValue, false},
    {zonstoryparser::GetShotDurationScaleFromXMP, &ClipScene::durationScale, false},
    {zonstoryparser::GetActionFromXMP, &ClipScene::action, true},
};

} // namespace

ClipScene ReadClipScene(const std::filesystem::path& clip, const ClipOptions& options) {
    ClipContents contents = ReadClip(clip, options);
    ClipScene scene;
    scene.clip = clip.string();
    scene.target = contents.target;
    scene.file = contents.file.string();
    for (const Field& field : kFields) {
        if (!field.read(contents.xmp, nullptr, &(scene.*field.member)) && !field.isOfScene) {
            field.read(contents.other, nullptr, &(scene.*field.member));
        }
    }
    std::vector<zonstoryparser::CharacterDialogue> dialogues;
    zonstoryparser::GetCharacterDialogueFromXMP(contents.xmp, nullptr, dialogues);
    for (const auto& [character, dialogue] : dialogues) {
        scene.dialogue.push_back({zoncore::UTF16to8(character), zoncore::UTF16to8(dialogue)});
    }
    scene.script = ReadScriptReference(contents.xmp);
    scene.contradiction = std::move(contents.contradiction);
    scene.notes = std::move(contents.notes);
    return scene;
}

} // namespace zonstory

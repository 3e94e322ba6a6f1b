#include <tuple>

#include <zonstoryparser/StoryComparison.h>

namespace zonstoryparser {

namespace {

// A value that is not there stays empty, as it is for a scene that does not say it.
template <typename Reader>
std::string Value(Reader read, SXMPMeta& xmp) {
    std::string value;
    read(xmp, nullptr, &value);
    return value;
}

auto Parts(const CarriedScene& scene) {
    return std::tie(scene.setting, scene.location, scene.timeOfDay, scene.action);
}

} // namespace

bool CarriedScene::IsEmpty() const {
    return *this == CarriedScene();
}

bool operator==(const CarriedScene& left, const CarriedScene& right) {
    const auto isSame = [](const CharacterDialogue& one, const CharacterDialogue& other) {
        return one.character == other.character && one.dialogue == other.dialogue;
    };
    return Parts(left) == Parts(right) && std::equal(left.dialogues.begin(), left.dialogues.end(),
                                                     right.dialogues.begin(), right.dialogues.end(), isSame);
}

CarriedScene ReadCarriedScene(SXMPMeta& xmp) {
    CarriedScene scene;
    scene.setting = Value(GetSceneSettingFromXMP, xmp);
    scene.location = Value(GetShotLocationFromXMP, xmp);
    scene.timeOfDay = Value(GetSceneTimeOfDayFromXMP, xmp);
    scene.action = Value(GetActionFromXMP, xmp);
    GetCharacterDialogueFromXMP(xmp, nullptr, scene.dialogues);
    return scene;
}

CarriedScene SceneToCarry(boost::intrusive_ptr<Scene> scene) {
    SXMPMeta xmp;
    std::vector<zonmetadata::Path> changed;
    const UString problem = WriteSceneMetadataIntoXMP(std::move(scene), xmp, changed);
    if (!problem.empty()) {
        constexpr std::int32_t kBadValue = 5; // the toolkit's
        throw XMP_Error(kBadValue, zoncore::UTF16to8(problem));
    }
    return ReadCarriedScene(xmp);
}

} // namespace zonstoryparser

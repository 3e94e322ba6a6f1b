#include <string>
#include <vector>

#include <zonstoryparser/Story.h>

namespace zonstoryparser {

// On purpose: scene number, shot name, shot number and duration do not count. Held by the tests StoryPresence.
bool HasAnyStoryRelatedMetadata(SXMPMeta& xmp) {
    XMP_OptionBits options = 0;
    for (const auto read :
         {GetSceneSettingFromXMP, GetShotLocationFromXMP, GetSceneTimeOfDayFromXMP, GetActionFromXMP}) {
        std::string value;
        if (read(xmp, &options, &value) && !value.empty()) {
            return true;
        }
    }
    std::vector<CharacterDialogue> dialogues;
    return GetCharacterDialogueFromXMP(xmp, &options, dialogues) && !dialogues.empty();
}

} // namespace zonstoryparser

#include <zonstoryparser/Story.h>

namespace zonstoryparser {

// On purpose: dialogue that has no speaker yet is carried forward to the next one. Held by the tests SceneContent.
void PushCharacterDialogue(UString& character, UString& dialogue, std::vector<CharacterDialogue>& list) {
    if (character.empty()) {
        return;
    }
    if (!dialogue.empty()) {
        list.push_back({character, dialogue});
    }
    character.clear();
    dialogue.clear();
}

} // namespace zonstoryparser

#include "Said.h"

#include <algorithm>

#include "Require.h"

namespace fuzz {

using namespace zonstoryparser;

Said WhatIsSaid(const Scene& scene) {
    Said said;
    UString character;
    UString dialogue;
    for (const auto& paragraph : scene.paragraphs) {
        if (paragraph == scene.paragraphs.front()) {
            said.firstID = paragraph->objectID.AsString();
        }
        if (paragraph->element == kSceneHeading) {
            said.heading.clear();
            GetTextRuns(paragraph, said.heading);
        } else if (paragraph->element == kCharacter) {
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

bool IsStorable(const Said& said) {
    const auto isStorable = [](const UString& text) { return text.find_first_of(u"\uFFFE\uFFFF") == UString::npos; };
    return isStorable(said.heading) && isStorable(said.action) &&
           std::all_of(said.dialogue.begin(), said.dialogue.end(), [&](const CharacterDialogue& one) {
               return isStorable(one.character) && isStorable(one.dialogue);
           });
}

void RequireReadsBack(const Said& said, SXMPMeta& xmp) {
    const auto requireText = [&](auto* read, const UString& text) {
        std::string value;
        REQUIRE(text.empty() || (read(xmp, nullptr, &value) && value == AsStored(text)));
    };
    UString setting;
    UString location;
    UString timeOfDay;
    if (!said.heading.empty()) {
        ParseSceneHeading(said.heading, setting, location, timeOfDay);
    }
    requireText(GetSceneSettingFromXMP, setting);
    requireText(GetShotLocationFromXMP, location);
    requireText(GetSceneTimeOfDayFromXMP, timeOfDay);
    requireText(GetActionFromXMP, said.action);
    std::vector<CharacterDialogue> dialogue;
    REQUIRE(GetCharacterDialogueFromXMP(xmp, nullptr, dialogue) == !said.dialogue.empty());
    REQUIRE(dialogue.size() == said.dialogue.size());
    for (std::size_t i = 0; i < dialogue.size(); ++i) {
        REQUIRE(zoncore::UTF16to8(dialogue[i].character) == AsStored(said.dialogue[i].character));
        REQUIRE(zoncore::UTF16to8(dialogue[i].dialogue) == AsStored(said.dialogue[i].dialogue));
    }
}

} // namespace fuzz

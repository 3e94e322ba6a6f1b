#include "script/SceneText.h"

namespace zonstoryparser {

SceneText GatherSceneText(const Scene& scene) {
    SceneText text;
    UString character;
    UString dialogue;
    bool isFirst = true;
    for (const boost::intrusive_ptr<Paragraph>& paragraph : scene.paragraphs) {
        if (!paragraph) {
            continue;
        }
        if (isFirst) {
            text.firstParagraphID = paragraph->objectID.AsString();
            isFirst = false;
        }
        switch (paragraph->element) {
        case kSceneHeading:
            text.heading.clear();
            GetTextRuns(paragraph, text.heading);
            break;
        case kCharacter:
            PushCharacterDialogue(character, dialogue, text.dialogues);
            GetTextRuns(paragraph, character);
            break;
        case kDialog:
            GetTextRuns(paragraph, dialogue);
            break;
        case kAction:
            GetTextRuns(paragraph, text.action);
            break;
        default:
            break;
        }
    }
    PushCharacterDialogue(character, dialogue, text.dialogues);
    return text;
}

} // namespace zonstoryparser

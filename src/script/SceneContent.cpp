#include <zonstoryparser/SceneContent.h>

namespace zonstoryparser {

SceneContent GatherSceneContent(const Scene& scene) {
    SceneContent content;
    UString character;
    UString dialogue;
    bool isFirst = true;
    for (const boost::intrusive_ptr<Paragraph>& paragraph : scene.paragraphs) {
        if (!paragraph) {
            continue;
        }
        if (isFirst) {
            content.firstParagraphID = paragraph->objectID.AsString();
            isFirst = false;
        }
        switch (paragraph->element) {
        case kSceneHeading:
            content.heading.clear();
            GetTextRuns(paragraph, content.heading);
            break;
        case kCharacter:
            PushCharacterDialogue(character, dialogue, content.dialogues);
            GetTextRuns(paragraph, character);
            break;
        case kDialog:
            GetTextRuns(paragraph, dialogue);
            break;
        case kAction:
            GetTextRuns(paragraph, content.action);
            break;
        default:
            break;
        }
    }
    PushCharacterDialogue(character, dialogue, content.dialogues);
    ParseSceneHeading(content.heading, content.setting, content.location, content.timeOfDay);
    return content;
}

} // namespace zonstoryparser

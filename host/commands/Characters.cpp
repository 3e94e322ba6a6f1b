#include "commands/Characters.h"

#include <vector>

#include "commands/CharactersByScene.h"
#include "output/ExitCode.h"
#include "output/Record.h"
#include "story/SceneFacts.h"

namespace zonstory {

namespace {

struct CharactersDocument {
    std::vector<CharacterFacts> characters;
};

} // namespace

template <>
const Fields<CharacterFacts>& FieldsOf<CharacterFacts>() {
    static const Fields<CharacterFacts> fields = {
        {"character", "character", &CharacterFacts::name},
        {"scenes", "scenes", [](const CharacterFacts& character) { return character.scenes.size(); }},
        {"scenePositions", nullptr, &CharacterFacts::scenes, Shown::InJson},
        {"lines", "lines", &CharacterFacts::lines},
        {"words", "words", &CharacterFacts::words},
    };
    return fields;
}

template <>
const Fields<CharactersDocument>& FieldsOf<CharactersDocument>() {
    static const Fields<CharactersDocument> fields = {{"characters", nullptr, &CharactersDocument::characters}};
    return fields;
}

int RunCharacters(const CharactersOptions& options, Output& output) {
    RefuseToReplace(options.target.file, {options.story.path});
    const Story story = ReadStory(options.story);
    const CharactersDocument document = {DescribeCharacters(*story.root)};
    ResultForms forms = {"characters", [&] { return RecordTable(document.characters).AsText(); },
                         [&] { return DocumentText("characters", document); },
                         [&] { return RecordTable(document.characters); }};
    if (options.byScene) {
        forms.table = [&] { return SpeakersByScene(DescribeScenes(story), document.characters); };
        forms.text = [&] { return forms.table().AsText(); };
        forms.json = [&] { return SpeakersBySceneDocument(DescribeScenes(story), document.characters); };
    }
    DeliverResult(options.target, forms, output);
    return kDone;
}

Json CharactersSchema() {
    return DocumentSchema<CharactersDocument>("characters");
}

} // namespace zonstory

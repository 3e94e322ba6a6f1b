#include "revision/DraftScene.h"

#include <algorithm>
#include <string_view>

namespace zonstoryparser {

namespace {

// In the languages whose headings are known; a draft says it in brackets, too.
constexpr std::u16string_view kOmittedWords[] = {u"OMITTED",   u"OMIT",    u"ENTFÄLLT", u"ENTFALLEN", u"GESTRICHEN",
                                                 u"SUPPRIMÉE", u"OMITIDA", u"OMESSA",   u"ELIMINATA"};

bool SaysOmitted(const UString& heading) {
    constexpr std::u16string_view kAround = u" \t()[].:-*";
    const std::size_t begin = heading.find_first_not_of(kAround);
    if (begin == UString::npos) {
        return false;
    }
    const std::u16string_view word(heading.data() + begin, heading.find_last_not_of(kAround) + 1 - begin);
    UString capitals(word);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), [](char16_t unit) {
        const bool isSmall = (unit >= u'a' && unit <= u'z') || (unit >= u'à' && unit <= u'þ' && unit != u'÷');
        return static_cast<char16_t>(isSmall ? unit - (u'a' - u'A') : unit);
    });
    return std::find(std::begin(kOmittedWords), std::end(kOmittedWords), capitals) != std::end(kOmittedWords);
}

} // namespace

void DraftScene::CutWords(WordNumbers& numbers) {
    heading = numbers.Split(content.heading);
    location = numbers.Split(content.location);
    action = numbers.Split(content.action);
    speeches.clear();
    speakers.clear();
    for (const CharacterDialogue& dialogue : content.dialogues) {
        speeches.push_back({dialogue.character, numbers.Split(dialogue.dialogue)});
        speakers.push_back(numbers.Of(dialogue.character));
    }
}

bool DraftScene::SaysSame(const DraftScene& other) const {
    return std::equal(speeches.begin(), speeches.end(), other.speeches.begin(), other.speeches.end(),
                      [](const Speech& left, const Speech& right) { return left.words == right.words; });
}

Words DraftScene::All() const {
    Words all = action;
    all.insert(all.end(), speakers.begin(), speakers.end());
    for (const Speech& speech : speeches) {
        all.insert(all.end(), speech.words.begin(), speech.words.end());
    }
    return all;
}

std::vector<DraftScene> ReadDraft(const Talewright& story, WordNumbers& numbers) {
    std::vector<DraftScene> scenes;
    if (!story.document || !story.document->body || !story.document->body->section) {
        return scenes;
    }
    const auto& written = story.document->body->section->scenes;
    scenes.resize(written.size()); // at once: words are looked up where they stand
    for (std::size_t index = 0; index < written.size(); ++index) {
        if (!written[index]) {
            continue;
        }
        DraftScene& scene = scenes[index];
        scene.number = written[index]->sceneNumber;
        scene.duration = written[index]->shotDuration;
        scene.content = GatherSceneContent(*written[index]);
        scene.isOmitted =
            SaysOmitted(scene.content.heading) && scene.content.action.empty() && scene.content.dialogues.empty();
        for (CharacterDialogue& dialogue : scene.content.dialogues) {
            dialogue.character = SpeakerName(dialogue.character);
        }
        scene.CutWords(numbers);
    }
    return scenes;
}

} // namespace zonstoryparser

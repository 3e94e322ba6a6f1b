#include "story/SceneFacts.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <zonstoryparser/SceneContent.h>

#include "story/BodyScenes.h"
#include "story/WordCount.h"

namespace zonstory {

namespace {

using zoncore::UTF16to8;

SceneFacts DescribeScene(const zonstoryparser::Scene& scene, std::size_t position) {
    const zonstoryparser::SceneContent content = zonstoryparser::GatherSceneContent(scene);
    SceneFacts facts;
    facts.position = position;
    facts.number = UTF16to8(scene.sceneNumber);
    facts.setting = UTF16to8(content.setting);
    facts.location = UTF16to8(content.location);
    facts.timeOfDay = UTF16to8(content.timeOfDay);
    facts.duration = UTF16to8(scene.shotDuration);
    for (const auto& [character, dialogue] : content.dialogues) {
        std::string speaker = UTF16to8(zonstoryparser::SpeakerName(character));
        if (std::find(facts.speakers.begin(), facts.speakers.end(), speaker) == facts.speakers.end()) {
            facts.speakers.push_back(std::move(speaker));
        }
        facts.dialogueWords += CountWords(dialogue);
    }
    facts.actionWords = CountWords(content.action);
    return facts;
}

} // namespace

std::vector<SceneFacts> DescribeScenes(const Story& story) {
    std::vector<SceneFacts> table;
    for (const auto& scene : BodyScenes(*story.root)) {
        table.push_back(DescribeScene(*scene, table.size() + 1));
        table.back().properties = story.scenes[table.size() - 1];
    }
    return table;
}

std::vector<CharacterFacts> DescribeCharacters(const zonstoryparser::Talewright& story) {
    std::vector<CharacterFacts> table;
    std::unordered_map<zoncore::UString, std::size_t> rows;
    std::size_t position = 0;
    for (const auto& scene : BodyScenes(story)) {
        ++position;
        for (const auto& [character, dialogue] : zonstoryparser::GatherSceneContent(*scene).dialogues) {
            const auto [row, isNew] = rows.try_emplace(zonstoryparser::SpeakerName(character), table.size());
            if (isNew) {
                table.push_back({UTF16to8(row->first), {}, 0, 0});
            }
            CharacterFacts& facts = table[row->second];
            if (facts.scenes.empty() || facts.scenes.back() != position) {
                facts.scenes.push_back(position);
            }
            ++facts.lines;
            facts.words += CountWords(dialogue);
        }
    }
    return table;
}

} // namespace zonstory

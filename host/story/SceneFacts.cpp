#include "story/SceneFacts.h"

#include <algorithm>
#include <charconv>
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

constexpr std::size_t kEighthsOfPage = 8;

std::optional<std::size_t> PlainNumber(const std::string& text) {
    std::size_t number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isPlain = error == std::errc() && rest == text.data() + text.size() && number > 0 && number < 100000;
    return isPlain ? std::optional(number) : std::nullopt;
}

// Follows the scenes down the pages. Where a scene begins is written; where it ends is counted from there, and no page
// behind the one that the next scene begins on.
void AddLastPages(std::vector<SceneFacts>& scenes) {
    std::size_t place = 0; // in eighths from the top of page 1
    for (std::size_t at = 0; at < scenes.size(); ++at) {
        const auto page = PlainNumber(scenes[at].properties.page);
        const std::size_t length = scenes[at].properties.eighths;
        if (!page || length == 0) {
            continue;
        }
        const std::size_t top = (*page - 1) * kEighthsOfPage;
        place = std::clamp(place, top, top + kEighthsOfPage - 1) + length;
        std::size_t last = (place - 1) / kEighthsOfPage + 1;
        const auto next = at + 1 < scenes.size() ? PlainNumber(scenes[at + 1].properties.page) : std::nullopt;
        if (next && *next >= *page) {
            last = std::min(last, *next);
        }
        scenes[at].lastPage = last;
    }
}

} // namespace

std::vector<SceneFacts> DescribeScenes(const Story& story) {
    std::vector<SceneFacts> table;
    for (const auto& scene : BodyScenes(*story.root)) {
        table.push_back(DescribeScene(*scene, table.size() + 1));
        table.back().properties = story.scenes[table.size() - 1];
    }
    AddLastPages(table);
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
                table.push_back({UTF16to8(row->first), {}, {}, 0, 0});
            }
            CharacterFacts& facts = table[row->second];
            if (facts.scenes.empty() || facts.scenes.back() != position) {
                facts.scenes.push_back(position);
                facts.linesInScene.push_back(0);
            }
            ++facts.linesInScene.back();
            ++facts.lines;
            facts.words += CountWords(dialogue);
        }
    }
    return table;
}

} // namespace zonstory

#include "report/CastPages.h"

#include <string>
#include <unordered_map>

#include <nlohmann/json.hpp>

#include <zonstoryparser/SceneContent.h>

namespace zonstory {

namespace {

using Speeches = std::vector<zoncore::UString>;

// The lines of each speaker, scene by scene, in the story's order.
std::unordered_map<std::string, std::vector<Speeches>> SpeechesOf(const std::vector<PageScene>& scenes) {
    std::unordered_map<std::string, std::vector<Speeches>> all;
    std::unordered_map<std::string, std::size_t> lastScene;
    for (const PageScene& scene : scenes) {
        for (const auto& [character, dialogue] : zonstoryparser::GatherSceneContent(*scene.scene).dialogues) {
            const std::string speaker = zoncore::UTF16to8(zonstoryparser::SpeakerName(character));
            std::size_t& last = lastScene[speaker];
            if (last != scene.facts.position) {
                last = scene.facts.position;
                all[speaker].emplace_back();
            }
            all[speaker].back().push_back(dialogue);
        }
    }
    return all;
}

Json LinesJson(const Speeches& speeches) {
    Json lines = Json::array();
    for (const zoncore::UString& speech : speeches) {
        lines.push_back({{"said", zoncore::UTF16to8(speech)}});
    }
    return lines;
}

Json CharacterJson(const CharacterFacts& character, const std::vector<PageScene>& scenes,
                   const std::vector<Speeches>& speeches) {
    Json appearances = Json::array();
    for (std::size_t at = 0; at < character.scenes.size(); ++at) {
        const PageScene& scene = scenes[character.scenes[at] - 1];
        appearances.push_back({{"label", scene.Label()},
                               {"link", scene.Link()},
                               {"heading", scene.heading},
                               {"count", character.linesInScene[at]},
                               {"speeches", LinesJson(speeches[at])}});
    }
    return {{"who", character.name},
            {"sceneCount", character.scenes.size()},
            {"lineCount", character.lines},
            {"wordCount", character.words},
            {"appearances", std::move(appearances)}};
}

} // namespace

Json CastPages(const std::vector<PageScene>& scenes, const std::vector<CharacterFacts>& characters) {
    auto speeches = SpeechesOf(scenes);
    Json pages = Json::array();
    for (const CharacterFacts& character : characters) {
        pages.push_back(CharacterJson(character, scenes, speeches[character.name]));
        pages.back()["castPlace"] = pages.size();
    }
    return pages;
}

} // namespace zonstory

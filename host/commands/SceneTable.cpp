#include "commands/SceneTable.h"

#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

namespace zonstory {

Table SceneTable(const std::vector<SceneFacts>& scenes) {
    Table table({{"position", "#", Align::Right},
                 {"number", "scene"},
                 {"setting", "setting"},
                 {"location", "location"},
                 {"time_of_day", "time of day"},
                 {"duration", "duration"},
                 {"dialogue_words", "said", Align::Right},
                 {"action_words", "action", Align::Right},
                 {"speakers", "speakers"}});
    for (const SceneFacts& scene : scenes) {
        table.AddRow({std::to_string(scene.position), scene.number, scene.setting, scene.location, scene.timeOfDay,
                      scene.duration, std::to_string(scene.dialogueWords), std::to_string(scene.actionWords),
                      fmt::format("{}", fmt::join(scene.speakers, ", "))});
    }
    return table;
}

Json SceneJson(const std::vector<SceneFacts>& scenes) {
    Json rows = Json::array();
    for (const SceneFacts& scene : scenes) {
        rows.push_back({{"position", scene.position},
                        {"number", scene.number},
                        {"setting", scene.setting},
                        {"location", scene.location},
                        {"timeOfDay", scene.timeOfDay},
                        {"duration", scene.duration},
                        {"speakers", scene.speakers},
                        {"dialogueWords", scene.dialogueWords},
                        {"actionWords", scene.actionWords}});
    }
    return rows;
}

} // namespace zonstory

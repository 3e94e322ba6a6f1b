#include "commands/SceneTable.h"

#include <algorithm>

#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

namespace zonstory {

namespace {

using zonscreenplay::SceneProperties;

bool TellsMore(const SceneFacts& scene) {
    const SceneProperties& properties = scene.properties;
    return !properties.page.empty() || properties.eighths > 0 || !properties.revision.empty() || properties.omitted;
}

std::vector<Column> Columns(bool tellMore) {
    std::vector<Column> columns = {{"position", "#", Align::Right},
                                   {"number", "scene"},
                                   {"setting", "setting"},
                                   {"location", "location"},
                                   {"time_of_day", "time of day"},
                                   {"duration", "duration"},
                                   {"dialogue_words", "said", Align::Right},
                                   {"action_words", "action", Align::Right},
                                   {"speakers", "speakers"}};
    if (tellMore) {
        columns.insert(columns.end(), {{"page", "page", Align::Right},
                                       {"eighths", "eighths", Align::Right},
                                       {"omitted", "omitted"},
                                       {"revision", "revision"}});
    }
    return columns;
}

Json MoreJson(const SceneProperties& properties) {
    Json more = Json::object();
    if (!properties.page.empty()) {
        more["page"] = properties.page;
    }
    if (properties.eighths > 0) {
        more["eighths"] = properties.eighths;
    }
    if (properties.omitted) {
        more["omitted"] = true;
    }
    if (!properties.revision.empty()) {
        more["revision"] = properties.revision;
    }
    return more;
}

} // namespace

Table SceneTable(const std::vector<SceneFacts>& scenes) {
    const bool tellMore = std::any_of(scenes.begin(), scenes.end(), &TellsMore);
    Table table(Columns(tellMore));
    for (const SceneFacts& scene : scenes) {
        std::vector<std::string> row = {std::to_string(scene.position),
                                        scene.number,
                                        scene.setting,
                                        scene.location,
                                        scene.timeOfDay,
                                        scene.duration,
                                        std::to_string(scene.dialogueWords),
                                        std::to_string(scene.actionWords),
                                        fmt::format("{}", fmt::join(scene.speakers, ", "))};
        if (tellMore) {
            const SceneProperties& more = scene.properties;
            row.insert(row.end(), {more.page, more.eighths == 0 ? "" : std::to_string(more.eighths),
                                   more.omitted ? "omitted" : "", more.revision});
        }
        table.AddRow(std::move(row));
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
        rows.back().update(MoreJson(scene.properties));
    }
    return rows;
}

} // namespace zonstory

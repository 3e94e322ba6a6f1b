#include "commands/CharactersByScene.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

#include <fmt/format.h>

#include "output/Record.h"

namespace zonstory {

namespace {

struct SceneLines {
    std::size_t position = 0;
    std::string number;
    std::vector<std::size_t> lines; ///< One for each speaker.
};

struct LinesDocument {
    std::vector<std::string> characters;
    std::vector<SceneLines> scenes;
};

// A feature has some ten thousand; a hostile file would ask for more than any memory holds.
constexpr std::size_t kMostCells = 16'000'000;

void RequireRoom(std::size_t scenes, std::size_t characters) {
    if (characters > 0 && scenes > kMostCells / characters) {
        throw std::length_error(fmt::format("a table of {} scenes and {} speakers is too large", scenes, characters));
    }
}

LinesDocument DocumentOf(const std::vector<SceneFacts>& scenes, const std::vector<CharacterFacts>& characters) {
    RequireRoom(scenes.size(), characters.size());
    LinesDocument document;
    document.scenes.reserve(scenes.size());
    for (const SceneFacts& scene : scenes) {
        document.scenes.push_back({scene.position, scene.number, std::vector<std::size_t>(characters.size(), 0)});
    }
    document.characters.reserve(characters.size());
    for (std::size_t who = 0; who < characters.size(); ++who) {
        document.characters.push_back(characters[who].name);
        for (std::size_t at = 0; at < characters[who].scenes.size(); ++at) {
            document.scenes[characters[who].scenes[at] - 1].lines[who] = characters[who].linesInScene[at];
        }
    }
    return document;
}

} // namespace

template <>
const Fields<SceneLines>& FieldsOf<SceneLines>() {
    static const Fields<SceneLines> fields = {{"position", "#", &SceneLines::position},
                                              {"number", "scene", &SceneLines::number},
                                              {"lines", nullptr, &SceneLines::lines, Shown::InJson}};
    return fields;
}

template <>
const Fields<LinesDocument>& FieldsOf<LinesDocument>() {
    static const Fields<LinesDocument> fields = {{"characters", nullptr, &LinesDocument::characters},
                                                 {"scenes", nullptr, &LinesDocument::scenes}};
    return fields;
}

Table SpeakersByScene(const std::vector<SceneFacts>& scenes, const std::vector<CharacterFacts>& characters) {
    const LinesDocument document = DocumentOf(scenes, characters);
    const Table left = RecordTable(document.scenes);
    std::vector<Column> columns = left.Columns();
    columns.reserve(columns.size() + characters.size());
    for (const std::string& name : document.characters) {
        columns.push_back({name, name, Align::Right, true});
    }
    Table table(std::move(columns));
    for (std::size_t scene = 0; scene < document.scenes.size(); ++scene) {
        std::vector<std::string> cells = left.Rows()[scene];
        const std::vector<std::size_t>& lines = document.scenes[scene].lines;
        std::transform(lines.begin(), lines.end(), std::back_inserter(cells),
                       [](std::size_t count) { return count == 0 ? std::string() : std::to_string(count); });
        table.AddRow(std::move(cells));
    }
    return table;
}

std::string SpeakersBySceneDocument(const std::vector<SceneFacts>& scenes,
                                    const std::vector<CharacterFacts>& characters) {
    return DocumentText("characters-by-scene", DocumentOf(scenes, characters));
}

Json SpeakersBySceneSchema() {
    return DocumentSchema<LinesDocument>("characters-by-scene");
}

} // namespace zonstory

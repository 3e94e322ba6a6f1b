#include "commands/Characters.h"

#include <vector>

#include <nlohmann/json.hpp>

#include "output/ExitCode.h"
#include "output/Json.h"
#include "output/Table.h"
#include "story/SceneFacts.h"

namespace zonstory {

namespace {

Table CharacterTable(const std::vector<CharacterFacts>& characters) {
    Table table({{"character", "character"},
                 {"scenes", "scenes", Align::Right},
                 {"lines", "lines", Align::Right},
                 {"words", "words", Align::Right}});
    for (const CharacterFacts& character : characters) {
        table.AddRow({character.name, std::to_string(character.scenes.size()), std::to_string(character.lines),
                      std::to_string(character.words)});
    }
    return table;
}

Json CharacterJson(const std::vector<CharacterFacts>& characters) {
    Json rows = Json::array();
    for (const CharacterFacts& character : characters) {
        rows.push_back({{"character", character.name},
                        {"scenes", character.scenes.size()},
                        {"scenePositions", character.scenes},
                        {"lines", character.lines},
                        {"words", character.words}});
    }
    return rows;
}

} // namespace

int RunCharacters(const CharactersOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const std::vector<CharacterFacts> characters = DescribeCharacters(*story.root);
    if (options.format == Format::Json) {
        Json document = JsonDocument("characters", 1);
        document["characters"] = CharacterJson(characters);
        output.Result(JsonText(document));
    } else {
        const Table table = CharacterTable(characters);
        output.Result(options.format == Format::Csv ? table.AsCsv() : table.AsText());
    }
    return kDone;
}

} // namespace zonstory

#include "commands/Schemas.h"

#include <nlohmann/json.hpp>

#include "commands/Characters.h"
#include "commands/CharactersByScene.h"
#include "commands/Check.h"
#include "commands/ClipReport.h"
#include "commands/Coverage.h"
#include "commands/DiffRecords.h"
#include "commands/History.h"
#include "commands/Info.h"
#include "commands/Log.h"
#include "commands/Match.h"
#include "commands/Scenes.h"
#include "commands/Show.h"

namespace zonstory {

std::vector<std::pair<std::string, std::string>> Schemas() {
    const std::pair<std::string, Json (*)()> documents[] = {
        {"characters", CharactersSchema},
        {"characters-by-scene", SpeakersBySceneSchema},
        {"check", CheckSchema},
        {"clip-history", ClipHistorySchema},
        {"coverage", CoverageSchema},
        {"diff", DiffSchema},
        {"history", HistorySchema},
        {"info", InfoSchema},
        {"log", LogSchema},
        {"match", MatchSchema},
        {"report", ReportSchema},
        {"scenes", ScenesSchema},
        {"show", ShowSchema},
    };
    std::vector<std::pair<std::string, std::string>> schemas;
    for (const auto& [name, schema] : documents) {
        schemas.emplace_back(name + ".schema.json", JsonText(schema()));
    }
    return schemas;
}

} // namespace zonstory

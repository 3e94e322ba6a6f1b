#include "commands/SceneFields.h"

namespace zonstory {

namespace {

std::optional<std::string> UnlessEmpty(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

std::optional<std::string> PageOf(const SceneFacts& scene) {
    return UnlessEmpty(scene.properties.page);
}

std::optional<std::size_t> EighthsOf(const SceneFacts& scene) {
    return scene.properties.eighths == 0 ? std::nullopt : std::optional<std::size_t>(scene.properties.eighths);
}

std::optional<bool> IsOmitted(const SceneFacts& scene) {
    return scene.properties.omitted ? std::optional(true) : std::nullopt;
}

std::optional<std::string> OmittedWord(const SceneFacts& scene) {
    return UnlessEmpty(scene.properties.omitted ? "omitted" : "");
}

std::optional<std::string> RevisionOf(const SceneFacts& scene) {
    return UnlessEmpty(scene.properties.revision);
}

} // namespace

template <>
const Fields<SceneFacts>& FieldsOf<SceneFacts>() {
    static const Fields<SceneFacts> fields = {
        {"position", "#", &SceneFacts::position},
        {"number", "scene", &SceneFacts::number},
        {"setting", "setting", &SceneFacts::setting},
        {"location", "location", &SceneFacts::location},
        {"timeOfDay", "time of day", &SceneFacts::timeOfDay},
        {"duration", "duration", &SceneFacts::duration},
        {"speakers", nullptr, &SceneFacts::speakers, Shown::InJson}, // last in a table, where its length does no harm
        {"dialogueWords", "said", &SceneFacts::dialogueWords},
        {"actionWords", "action", &SceneFacts::actionWords},
        {"speakers", "speakers", &SceneFacts::speakers, Shown::InTables},
        Field<SceneFacts>("page", "page", PageOf).ToTheRight().WhereTold(),
        Field<SceneFacts>("lastPage", "last page", &SceneFacts::lastPage).WhereTold(),
        Field<SceneFacts>("eighths", "eighths", EighthsOf).WhereTold(),
        Field<SceneFacts>("omitted", nullptr, IsOmitted, Shown::InJson).WhereTold(),
        Field<SceneFacts>("omitted", "omitted", OmittedWord, Shown::InTables).WhereTold(),
        Field<SceneFacts>("revision", "revision", RevisionOf).WhereTold(),
    };
    return fields;
}

} // namespace zonstory

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <zonstoryparser/SceneContent.h>

#include "match/ClipLog.h"

namespace zonstory {

/// What a log can be told of a clip. The order is that of the table in docs/logs.md.
enum class LogField {
    Scene,
    Shot,
    Take,
    Set,
    Location,
    Time,
    Dialogue,
    Actions,
    Characters,
    Description,
    Comments,
    Keywords
};

/// A field to be filled, and the column for it.
struct LogFill {
    LogField field = LogField::Scene;
    std::string title; ///< As the user has it; empty for the one that the field is known by.
};

/// Reads "scene,take,set=Motiv".
/// @throws std::invalid_argument with the part that says nothing, or is there twice.
std::vector<LogFill> ParseLogFills(std::string_view text);

/// The fields that a system reads, by what it is called for: "script", a column for each thing; "media", the columns of a
/// media pool: description, comments and keywords. Nothing for another word.
std::optional<std::vector<LogFill>> FindLogProfile(std::string_view name);

/// The title of the column that a log gets where it has none for the field.
std::string TitleOf(const LogFill& fill);

/// A log's column for a field: by the user's title, or the usual names.
std::optional<std::size_t> FindColumnOf(const LogFill& fill, const ClipLog& log);

/// What a scene says to each field.
class SceneWords {
public:
    explicit SceneWords(const zonstoryparser::Scene& scene) : mContent(zonstoryparser::GatherSceneContent(scene)) {}

    /// UTF-8. Nothing to Scene, Shot and Take, which are the clip's own.
    std::string Text(LogField field) const;
    /// Of Set, Location and Time the text, of Characters each; of Keywords all four.
    std::vector<std::string> Keywords(LogField field) const;

private:
    std::vector<std::string> Speakers() const;

    zonstoryparser::SceneContent mContent;
};

} // namespace zonstory

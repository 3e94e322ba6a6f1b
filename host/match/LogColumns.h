#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zonstory {

/// What a log's columns hold, found by their names. Case, blanks and signs do not matter: "Scene #" is "scene".
struct LogColumns {
    std::optional<std::size_t> file;   ///< A media file's name or path.
    std::optional<std::size_t> folder; ///< Of that file.
    std::optional<std::size_t> clip;   ///< A clip's name, with or without its file's extension.
    std::optional<std::size_t> sound;  ///< The file of the sound recorder.
    std::optional<std::size_t> reel;   ///< A tape, or a camera's roll.
    std::optional<std::size_t> number; ///< Of the clip on its roll.
    std::optional<std::size_t> scene;  ///< The slate's where there is no other.
    std::optional<std::size_t> take;
    std::optional<std::size_t> slate;
    bool slatesAreScenes = false; ///< "12A" stands in the column for slates, as in a camera report.

    /// Whether rows say of some clip which scene it shows.
    bool AreEnough() const { return scene && (file || clip || sound || reel || (slate && !slatesAreScenes)); }
};

/// The first column that bears one of these names, which are parted by blanks and stand in the order of preference; each in
/// capitals without blanks, signs and accents, as "SCENEN" is for "Scène n°".
std::optional<std::size_t> FindColumn(std::string_view names, const std::vector<std::string>& columns);

/// A column's name as FindColumn() takes it.
std::string PlainColumnName(std::string_view name);

/// What the user says of a log's columns: "clip", "file", "folder", "sound", "reel", "number", "scene", "take" or "slate", and the
/// name of the column.
using GivenColumns = std::vector<std::pair<std::string, std::string>>;

/// Reads "clip=Datei,scene=Szene".
/// @throws std::invalid_argument with the part that says nothing.
GivenColumns ParseGivenColumns(std::string_view text);

/// The first column of each kind; the usual names in front of those that are usual for something else too.
LogColumns FindLogColumns(const std::vector<std::string>& names, const GivenColumns& given = {});

} // namespace zonstory

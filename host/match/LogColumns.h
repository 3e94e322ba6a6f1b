#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zonstory {

/// What a log's columns hold, found by their names. Case, blanks and signs do not matter: "Scene #" is "scene".
struct LogColumns {
    std::optional<std::size_t> file;   ///< A media file's name or path.
    std::optional<std::size_t> clip;   ///< A clip's name, with or without its file's extension.
    std::optional<std::size_t> sound;  ///< The file of the sound recorder.
    std::optional<std::size_t> reel;   ///< A tape, or a camera's roll.
    std::optional<std::size_t> number; ///< Of the clip on its roll.
    std::optional<std::size_t> scene;
    std::optional<std::size_t> take;
    std::optional<std::size_t> slate;

    /// Whether rows say of some clip which scene it shows.
    bool AreEnough() const { return scene && (file || clip || sound || reel || slate); }
};

/// The first column of each kind; the usual names in front of those that are usual for something else too.
LogColumns FindLogColumns(const std::vector<std::string>& names);

} // namespace zonstory

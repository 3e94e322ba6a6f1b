#pragma once

#include <optional>
#include <string>

#include <zonscreenplay/Screenplay.h>

/// Reads the story that a command is about, whatever its format.
namespace zonstory {

using Story = zonscreenplay::Screenplay;

/// A story as the user names it.
struct StoryFile {
    std::string path; ///< "-" for standard input.
    std::optional<zonscreenplay::Format> format;
    bool strictFountain = false;
    zonscreenplay::Limits limits;

    /// What the user is told of: the path, or "standard input".
    std::string Name() const;
};

/// @param recordLines  Fill Story::lines.
/// @throws zonscreenplay::ReadError
Story ReadStory(const StoryFile& file, bool recordLines = false);

} // namespace zonstory

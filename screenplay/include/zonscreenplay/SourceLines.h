#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <zonscreenplay/Export.h>
#include <zonstoryparser/StoryModel.h>

namespace zonscreenplay {

/// On which line of its file each scene and paragraph of a story starts. The model itself keeps no lines, so they stand
/// beside it, and only where asked for. Of something that is not of the story that was read, nothing is known.
class ZONSCREENPLAY_API SourceLines {
public:
    using Entry = std::pair<const void*, std::size_t>; ///< A scene or paragraph, and its line.

    SourceLines() = default;
    /// @param entries  In any order; of several of one element, the last counts.
    explicit SourceLines(std::vector<Entry> entries);

    /// @return The line, from 1; 0 when none was recorded. Logarithmic in the length of the story.
    std::size_t Of(const zonstoryparser::Scene& scene) const { return Line(&scene); }
    std::size_t Of(const zonstoryparser::Paragraph& paragraph) const { return Line(&paragraph); }

private:
    std::size_t Line(const void* element) const;

    std::vector<Entry> mEntries; // by element
};

} // namespace zonscreenplay

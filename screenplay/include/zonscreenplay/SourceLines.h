#pragma once

#include <cstddef>
#include <unordered_map>

#include <zonscreenplay/Export.h>
#include <zonstoryparser/StoryModel.h>

namespace zonscreenplay {

/// On which line of its file each scene and paragraph of a story starts. The model itself keeps no lines, so they are
/// recorded beside it, and only where asked for.
///
/// The recorder is told of every start after the story's handler has seen it, and looks where the tree has grown: what
/// the handler dropped or put out of reach gets no line.
class ZONSCREENPLAY_API SourceLines {
public:
    void AfterSection(const zonstoryparser::Talewright* story, std::size_t line);
    void AfterScene(std::size_t line);
    void AfterParagraph(std::size_t line);

    /// @return The line, from 1; 0 when none was recorded.
    std::size_t Of(const zonstoryparser::Scene& scene) const { return Line(&scene); }
    std::size_t Of(const zonstoryparser::Paragraph& paragraph) const { return Line(&paragraph); }

private:
    std::size_t Line(const void* element) const;

    std::unordered_map<const void*, std::size_t> mLines;
    const zonstoryparser::Section* mSection = nullptr; // takes the next scene; null when it is out of reach
    const zonstoryparser::Scene* mScene = nullptr;
};

} // namespace zonscreenplay

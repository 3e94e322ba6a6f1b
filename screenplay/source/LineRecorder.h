#pragma once

#include <cstddef>
#include <unordered_set>
#include <utility>
#include <vector>

#include <zonscreenplay/SourceLines.h>
#include <zonstoryparser/StoryModel.h>

namespace zonscreenplay {

/// Gathers the lines of a story while it is read. It is told of every start after the story's handler has seen it, and
/// looks where the tree has grown: what the handler dropped or put out of reach gets no line.
class LineRecorder {
public:
    void AfterSection(const zonstoryparser::Talewright* story);
    void AfterScene(std::size_t line);
    void AfterParagraph(std::size_t line);

    /// Called once, at the end.
    SourceLines Finish() { return SourceLines(std::move(mEntries)); }

private:
    std::vector<SourceLines::Entry> mEntries;
    std::unordered_set<const void*> mSections;         // that took scenes
    const zonstoryparser::Section* mSection = nullptr; // takes the next scene; null when it is out of reach
    const zonstoryparser::Scene* mScene = nullptr;
    const zonstoryparser::Paragraph* mParagraph = nullptr; // of that scene, recorded last
};

} // namespace zonscreenplay

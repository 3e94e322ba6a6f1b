#include <zonscreenplay/SourceLines.h>

namespace zonscreenplay {

namespace {

using zonstoryparser::Document;
using zonstoryparser::Section;
using zonstoryparser::Talewright;

// Calls `visit` with the sections that a start tag can have added.
template <typename Visit>
void ForEachCandidate(const Document& document, Visit visit) {
    for (const auto* stream : {&document.body, &document.header, &document.footer}) {
        if (*stream && (*stream)->section) {
            visit((*stream)->section.get());
        }
    }
    if (!document.commentStreams.empty() && document.commentStreams.back()->section) {
        visit(document.commentStreams.back()->section.get());
    }
}

} // namespace

void SourceLines::AfterSection(const Talewright* story, std::size_t line) {
    mSection = nullptr;
    mScene = nullptr;
    if (story == nullptr || !story->document) {
        return;
    }
    ForEachCandidate(*story->document, [&](const Section* section) {
        if (mLines.emplace(section, line).second) {
            mSection = section;
        }
    });
}

void SourceLines::AfterScene(std::size_t line) {
    mScene = nullptr;
    if (mSection != nullptr && !mSection->scenes.empty()) {
        mScene = mSection->scenes.back().get();
        mLines.emplace(mScene, line);
    }
}

void SourceLines::AfterParagraph(std::size_t line) {
    if (mScene != nullptr && !mScene->paragraphs.empty()) {
        mLines.emplace(mScene->paragraphs.back().get(),
                       line); // keeps the old line when the paragraph was dropped
    }
}

std::size_t SourceLines::Line(const void* element) const {
    const auto found = mLines.find(element);
    return found == mLines.end() ? 0 : found->second;
}

} // namespace zonscreenplay

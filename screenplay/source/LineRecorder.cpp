#include "source/LineRecorder.h"

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

void LineRecorder::AfterSection(const Talewright* story) {
    mSection = nullptr;
    mScene = nullptr;
    mParagraph = nullptr;
    if (story == nullptr || !story->document) {
        return;
    }
    ForEachCandidate(*story->document, [&](const Section* section) {
        if (mSections.insert(section).second) {
            mSection = section;
        }
    });
}

void LineRecorder::AfterScene(std::size_t line) {
    if (mSection == nullptr || mSection->scenes.empty() || mSection->scenes.back().get() == mScene) {
        return; // the handler dropped the scene, and the one before it keeps its line
    }
    mScene = mSection->scenes.back().get();
    mParagraph = nullptr;
    mEntries.emplace_back(mScene, line);
}

void LineRecorder::AfterParagraph(std::size_t line) {
    if (mScene == nullptr || mScene->paragraphs.empty() || mScene->paragraphs.back().get() == mParagraph) {
        return; // dropped as well
    }
    mParagraph = mScene->paragraphs.back().get();
    mEntries.emplace_back(mParagraph, line);
}

} // namespace zonscreenplay

#pragma once

#include <vector>

#include <zonstoryparser/Story.h>

namespace zonstoryparser {

/// What a scene's paragraphs say, gathered by kind.
struct SceneText {
    UString firstParagraphID; ///< Of the first paragraph, whatever its kind.
    UString heading;          ///< Of the last heading paragraph.
    UString action;           ///< Of all action paragraphs, joined by two spaces.
    std::vector<CharacterDialogue> dialogues;
};

/// Walks the scene's paragraphs; shots, parentheticals, transitions and unknown kinds say nothing.
SceneText GatherSceneText(const Scene& scene);

} // namespace zonstoryparser

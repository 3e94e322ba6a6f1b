#pragma once

#include <vector>

#include <zonstoryparser/SceneContent.h>

#include "revision/Words.h"

namespace zonstoryparser {

/// What a draft says of a scene, its words as numbers.
struct DraftScene {
    struct Speech {
        UString speaker; ///< As SpeakerName() gives it.
        Words words;
    };

    UString number; ///< Empty where it has none.
    UString duration;
    bool isOmitted = false; ///< Its heading says OMITTED and nothing else, and there is no other text.
    SceneContent content;   ///< What the words are cut from.
    Words heading;
    Words location;
    Words action;
    std::vector<Speech> speeches;
    Words speakers; ///< One for each speech.

    /// Cuts the words from the content, again after it has changed. The content stays where it is from then on.
    void CutWords(WordNumbers& numbers);

    /// Whether the speeches say the same, whoever speaks.
    bool SaysSame(const DraftScene& other) const;
    /// All of its words that are said or done, speakers among them, in reading order.
    Words All() const;
};

/// The scenes of a story's body. The content of each is where `numbers` looks words up.
std::vector<DraftScene> ReadDraft(const Talewright& story, WordNumbers& numbers);

} // namespace zonstoryparser

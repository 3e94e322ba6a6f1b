#pragma once

#include <utility>
#include <vector>

#include "revision/DraftScene.h"

namespace zonstoryparser {

/// How like the scenes of two drafts are to each other, from 0 (nothing in common) to 1 (the same). Words that few scenes
/// have weigh most, so that what everybody says in every scene makes nothing alike.
class Likeness {
public:
    /// @param oldDraft  Both must outlive this.
    Likeness(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft, std::size_t wordCount);

    double Of(std::size_t oldIndex, std::size_t newIndex) const;

    /// The scenes of the new draft that may be like an old one: those that share its rarest words, its heading or all its
    /// words. A bounded number, so that looking at them all stays linear in the scenes.
    std::vector<std::size_t> Candidates(std::size_t oldIndex) const;

    /// The same for all scenes that say the same, heading included.
    Word IdentityOfOld(std::size_t index) const { return mOld[index].identity; }
    Word IdentityOfNew(std::size_t index) const { return mNew[index].identity; }

private:
    struct Bag {
        std::vector<std::pair<Word, unsigned>> words; // with their number, in ascending order
        double weight = 0;
        Word heading = 0;
        Word identity = 0;
    };

    static std::vector<Bag> MakeBags(const std::vector<DraftScene>& draft, class TextNumbers& texts);
    void WeighWords(std::size_t wordCount);
    void IndexNewScenes();
    double HeadingLikeness(std::size_t oldIndex, std::size_t newIndex) const;

    const std::vector<DraftScene>& mOldDraft;
    const std::vector<DraftScene>& mNewDraft;
    std::vector<Bag> mOld;
    std::vector<Bag> mNew;
    std::vector<double> mWeights;                        // by word
    std::vector<std::vector<std::size_t>> mScenesOfWord; // of the new draft; none for words that many have
    std::vector<std::vector<std::size_t>> mScenesOfText; // of the new draft, by heading and by identity
};

} // namespace zonstoryparser

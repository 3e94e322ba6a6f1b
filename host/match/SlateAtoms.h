#pragma once

#include <string_view>
#include <vector>

#include "match/NameRuns.h"
#include "match/SlateWords.h"

namespace zonstory {

/// One word of a name as a slate sees it: a number with what is glued to it, a take, or a word that may say what stands
/// beside it.
struct SlateAtom {
    enum class Kind { Number, Take, Word, Noise };

    Kind kind = Kind::Noise;
    SlateWord word = SlateWord::Unknown; ///< Of a Word; of a Number the scene or slate word glued in front.
    bool reel = false;                   ///< Noise that names a camera's clip.
    std::size_t begin = 0;               ///< The first run.
    std::size_t number = 0;              ///< The run of a Number's or a Take's digits.
    std::string_view prefix;             ///< A of A12.
    std::string_view letters;            ///< A of 12A; the word itself of a Word.
    std::string_view unread; ///< Letters that were taken for a remark, AFS of 5AFS: scene 5A may have a set-up FS.
    std::string_view take;   ///< 3 of 12T3; the digits of a Take.
    std::string_view tail;   ///< 3 of 12A3, where nothing says whether it is a take.

    bool IsPlainNumber() const {
        return kind == Kind::Number && word == SlateWord::Unknown && prefix.empty() && letters.empty() &&
               take.empty() && tail.empty();
    }
    bool IsSceneWord() const { return kind == Kind::Word && word == SlateWord::Scene; }
    bool IsLetter() const { return kind == Kind::Word && letters.size() == 1; }
};

/// Cuts a name, its noise marked, into atoms. Their texts are views into `name`.
std::vector<SlateAtom> ReadAtoms(const NameRuns& name);

} // namespace zonstory

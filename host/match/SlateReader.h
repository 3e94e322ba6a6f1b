#pragma once

#include <string_view>
#include <vector>

#include "match/NameRuns.h"
#include "match/Slate.h"
#include "match/SlateAtoms.h"

namespace zonstory {

/// Reads one name: finds its numbers, what stands around each, and how sure each is to be the scene.
class SlateReader {
public:
    explicit SlateReader(std::string_view name);

    /// May be called once.
    std::vector<SlateReading> Read();

private:
    enum class Marker { None, Letter, Slate, Scene };
    enum class TakeKind { None, Far, Bare, Spoken }; ///< Elsewhere in the name; a number; behind its own word.

    struct Take {
        TakeKind kind = TakeKind::None;
        std::size_t atom = 0;
        std::string_view digits;
        std::string_view setUp; ///< A letter that stands apart: "12 A 3".
    };

    /// A number and its surroundings.
    struct Slate {
        std::size_t at = 0; ///< Its atom.
        Marker marker = Marker::None;
        std::string_view prefix;
        std::string_view apart; ///< A lone letter in front, "A 12": a camera, or a part of the number.
        Take take;
    };

    struct Verdict {
        SlateRule rule = SlateRule::AmongWords;
        Confidence confidence = Confidence::None;
    };

    void TakeStock();
    Slate Surroundings(std::size_t at) const;
    Marker MarkerInFront(std::size_t at, std::string_view& prefix, std::string_view& apart) const;
    Take FindTake(std::size_t at) const;
    Take FindFarTake() const;
    bool IsBoundToNext(std::size_t at) const;
    bool IsChain(std::size_t at) const;
    bool IsBareTake(std::size_t slate, std::size_t at) const;
    bool IsSetUpApart(std::size_t at) const;
    bool IsJoinedToNext(std::size_t at) const;
    std::size_t NextNumber(std::size_t at) const;
    bool IsSeason(const Slate& slate) const;
    bool IsWhole(const Slate& slate) const;
    bool HasLetters(const Slate& slate) const;

    Verdict Judge(const Slate& slate) const;
    Verdict JudgeMarked(const Slate& slate) const;
    Verdict JudgeUnmarked(const Slate& slate) const;
    Verdict JudgeWithTake(const Slate& slate) const;
    Verdict JudgeAlone(const Slate& slate) const;
    bool LooksLikeSomethingElse(const Slate& slate) const;

    void ReadNumber(std::size_t at);
    void ReadPartners(std::size_t at, const Verdict& verdict);
    void AddMain(const Slate& slate, const Verdict& verdict);
    void AddRivals(const Slate& slate, const Verdict& verdict);
    void AddRange(const Slate& slate, const Verdict& verdict);
    void AddComposite(std::size_t first, std::size_t second, Confidence confidence, std::size_t place);
    void AddDecimals();
    void AddRival(std::string scene, std::string_view take, const Verdict& verdict, std::size_t place, bool exactOnly);
    void SettleLooseNumbers();

    std::string SceneOf(std::string_view prefix, std::size_t at, std::string_view setUp) const;
    std::uint32_t Value(std::size_t at) const { return mName[mAtoms[at].number].value; }

    NameRuns mName;
    std::vector<SlateAtom> mAtoms;
    std::vector<bool> mUsed; ///< Numbers and takes that belong to a number in front.
    std::vector<SlateReading> mReadings;
    bool mUnknownWords = false;
    bool mReel = false;
    bool mLooseDigits = false; ///< A date or a counter.
};

} // namespace zonstory

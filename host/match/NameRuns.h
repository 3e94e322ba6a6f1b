#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zonstory {

/// A stretch of a name that is all digits or all letters.
struct NameRun {
    std::uint32_t begin = 0; ///< Into the folded text.
    std::uint32_t end = 0;
    std::uint32_t value = 0; ///< Of digits; the largest value where they say more.
    bool digits = false;
    bool glued = false;  ///< Nothing stands between this run and the one before.
    bool noise = false;  ///< Part of a date, a reel name, a frame size: says nothing of the scene.
    bool joined = false; ///< Digits that the story takes with those in front as one number, 2.28.
};

/// A name cut where letters, digits and everything else meet. "Sc12A-3" is SC, 12, A, 3.
///
/// Letters are folded to capitals without accents as far as the words of slates need it ("Scène" is SCENE); every other
/// byte above ASCII counts as a letter, so that a number inside a word of any script is seen to be inside a word.
class NameRuns {
public:
    /// Takes any bytes. A name beyond kMostRuns runs is no slate and has none.
    explicit NameRuns(std::string_view name);

    static constexpr std::size_t kMostRuns = 256;

    std::size_t size() const { return mRuns.size(); }
    NameRun& operator[](std::size_t index) { return mRuns[index]; }
    const NameRun& operator[](std::size_t index) const { return mRuns[index]; }

    std::string_view Text(std::size_t run) const;
    std::size_t Length(std::size_t run) const { return mRuns[run].end - mRuns[run].begin; }

    /// What stands between this run and the one before; empty where they touch and in front of the first.
    std::string_view Separator(std::size_t run) const;

    /// The end of the chunk that begins at `run`: runs glued to one another.
    std::size_t ChunkEnd(std::size_t run) const;

    std::string_view Whole() const { return mText; } ///< Folded.

private:
    std::string mText;
    std::vector<NameRun> mRuns;
};

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool AreDigits(std::string_view text); ///< At least one, and nothing else.

/// Whether a separator has one of these characters in it.
inline bool HasAny(std::string_view separator, std::string_view characters) {
    return separator.find_first_of(characters) != std::string_view::npos;
}

/// Digits without the zeros in front; "0" stays.
std::string_view WithoutLeadingZeros(std::string_view digits);

} // namespace zonstory

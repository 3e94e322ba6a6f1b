#pragma once

#include <string_view>

#include "match/NameRuns.h"
#include "match/SlateWords.h"

/// What a run of a name is; false for a place behind its end.
namespace zonstory {

/// Of digits that can be a scene or a take.
inline constexpr std::size_t kLongestNumber = 4;

inline bool IsDigits(const NameRuns& name, std::size_t run) {
    return run < name.size() && name[run].digits;
}

inline bool IsDigits(const NameRuns& name, std::size_t run, std::size_t least, std::size_t most) {
    return IsDigits(name, run) && name.Length(run) >= least && name.Length(run) <= most;
}

inline bool IsLetters(const NameRuns& name, std::size_t run) {
    return run < name.size() && !name[run].digits;
}

inline bool IsWord(const NameRuns& name, std::size_t run, std::string_view word) {
    return IsLetters(name, run) && name.Text(run) == word;
}

inline bool IsGlued(const NameRuns& name, std::size_t run) {
    return run < name.size() && name[run].glued;
}

inline bool IsLoneNumber(const NameRuns& name, std::size_t run) {
    return IsDigits(name, run) && name.Alone(run);
}

inline bool IsTakeAt(const NameRuns& name, std::size_t run) {
    return IsDigits(name, run) || (IsLetters(name, run) && MeaningOf(name.Text(run)) == SlateWord::Take);
}

} // namespace zonstory

#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "match/NamePieces.h"
#include "match/Slate.h"

namespace zonstory {

constexpr std::size_t kFewNames = 5; ///< That prove nothing yet.

/// A name, and what is known of its clip from elsewhere.
struct KnownName {
    const NamePieces* pieces = nullptr;
    std::optional<std::size_t> scene; ///< By a log, its metadata or a folder that says so in words.
    bool belowScene = false;          ///< In a folder of a shot or a take.
};

/// What the numbers of names of one shape are, chosen so that all of them together are best explained.
struct NamePattern {
    std::size_t names = 0;
    std::optional<std::size_t> scene; ///< Places among the names' numbers.
    std::optional<std::size_t> take;
    SlateRule rule = SlateRule::AmongWords;
    bool proven = false;   ///< The names bear one another out: scenes vary, takes count from 1 in each set-up.
    bool refuted = false;  ///< They speak against it: a counter, or known scenes that it does not give.
    bool counting = false; ///< The scene numbers are 1, 2, 3, … without a gap.
    bool below = false;    ///< Folders below say shot or take.
    bool taught = false;   ///< Known scenes bear it out.
};

/// @param names  Of one shape; at least one.
NamePattern ReadPattern(std::span<const KnownName> names, const SceneNumbers& story);

} // namespace zonstory

#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include <zonstoryparser/StoryComparison.h>

#include "revision/DraftScene.h"

namespace zonstoryparser {

/// Which scene of the old draft became which of the new, as indexes from 0.
struct ScenePairs {
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    std::vector<std::size_t> newOf; ///< By old scene; kNone where there is none.
    std::vector<std::size_t> oldOf; ///< By new scene.
    std::vector<SceneTie> ties;     ///< Positions from 1, as they are reported.

    bool IsPairOpen(std::size_t oldIndex, std::size_t newIndex) const {
        return newOf[oldIndex] == kNone && oldOf[newIndex] == kNone;
    }
    void Pair(std::size_t oldIndex, std::size_t newIndex);
    void Part(std::size_t oldIndex);
};

/// @param wordCount  More than any word's number in either draft.
ScenePairs PairScenes(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft,
                      std::size_t wordCount);

/// The old scenes, in ascending order, that are not part of the longest run of pairs in the same order in both drafts.
std::vector<std::size_t> FindMoved(const ScenePairs& pairs);

} // namespace zonstoryparser

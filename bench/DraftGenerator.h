#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <zonstoryparser/StoryComparison.h>

namespace bench {

/// What is done to a draft to make the next one. Shares are of all scenes, in percent; each scene suffers one thing at most.
struct RevisionPlan {
    std::size_t scenes = 100;
    bool areNumbered = true;      ///< Else neither draft has numbers.
    bool isRenumbered = false;    ///< The new draft counts its scenes afresh.
    unsigned rewritten = 0;       ///< Words of action and speeches exchanged,
    unsigned wordsRewritten = 33; ///< so many percent of them.
    unsigned added = 0;
    unsigned removed = 0;
    unsigned omitted = 0;
    unsigned moved = 0;
    unsigned split = 0;             ///< The second half becomes a scene of its own, 12A behind 12.
    unsigned renamedCharacters = 0; ///< So many of them, everywhere,
    unsigned renamedPlaces = 0;
};

/// Two drafts, and what became of each scene.
struct Revision {
    boost::intrusive_ptr<zonstoryparser::Talewright> before;
    boost::intrusive_ptr<zonstoryparser::Talewright> after;
    std::vector<zonstoryparser::SceneComparison>
        key; ///< Positions, state and isMoved alone, in the order of comparisons.
};

/// The same for the same plan and seed, on every machine.
Revision MakeRevision(const RevisionPlan& plan, std::uint32_t seed);

/// Of all scenes of the key, how many the comparison tells otherwise: paired with another scene, or in another state.
std::size_t CountMistakes(const Revision& revision, const zonstoryparser::StoryComparison& comparison);

} // namespace bench

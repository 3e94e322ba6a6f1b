#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "match/ClipStatements.h"
#include "match/Decision.h"

namespace zonstory {

inline void PrintTo(Confidence confidence, std::ostream* os) {
    *os << Name(confidence);
}
inline void PrintTo(Verdict verdict, std::ostream* os) {
    *os << Name(verdict);
}

} // namespace zonstory

namespace zonstory::test {

/// What a path says: the number of the scene, or "-" with all that fit behind it when there is no answer.
inline std::string SceneOf(const std::string& path, const SceneNumbers& story, SlateStyle style = SlateStyle::Scene,
                           Confidence bar = Confidence::Medium) {
    const Decision decision = Decide(StatePath(path, story, style), story, bar);
    std::string scene = decision.scene ? story.Number(*decision.scene) : "-";
    for (const std::size_t one : decision.between) {
        scene += " " + story.Number(one);
    }
    return scene;
}

} // namespace zonstory::test

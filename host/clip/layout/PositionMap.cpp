#include "clip/layout/PositionMap.h"

#include <algorithm>

namespace zonstory {

PositionMap::PositionMap(const EditList& edits, std::uint64_t size) {
    std::uint64_t moved = 0;
    for (const Edit& edit : edits) {
        const std::uint64_t end = edit.offset + edit.taken;
        if (end < size) {
            moved += edit.put.size() - edit.taken;
        }
        if (edit.offset < size) {
            const bool isCutOff = end == size && edit.put.empty(); // its beginning was the end once, and is again
            mSteps.push_back({isCutOff ? edit.offset + 1 : edit.offset, end, moved});
        }
    }
}

std::optional<std::uint64_t> PositionMap::At(std::uint64_t position) const {
    return Behind(std::upper_bound(mSteps.begin(), mSteps.end(), position,
                                   [](std::uint64_t at, const Step& step) { return at < step.begin; }),
                  position);
}

std::optional<std::uint64_t> PositionMap::EndAt(std::uint64_t position) const {
    return Behind(std::lower_bound(mSteps.begin(), mSteps.end(), position,
                                   [](const Step& step, std::uint64_t at) { return step.begin < at; }),
                  position);
}

std::optional<std::uint64_t> PositionMap::Behind(std::vector<Step>::const_iterator next, std::uint64_t position) const {
    if (next == mSteps.begin()) {
        return position;
    }
    const Step& step = *--next;
    return position < step.end ? std::nullopt : std::optional(position + step.moved);
}

} // namespace zonstory

#include "clip/EditPlaces.h"

#include <algorithm>

namespace zonstory {

std::uint64_t SizeAfter(const EditList& edits, std::uint64_t size) {
    for (const Edit& edit : edits) {
        size += edit.put.size() - edit.taken;
    }
    return size;
}

std::vector<Stretch> StretchesOf(const EditList& edits, std::uint64_t size) {
    std::vector<Stretch> stretches;
    Stretch open;
    for (const Edit& edit : edits) {
        if (KeepsLength(edit)) {
            continue;
        }
        open.size = edit.offset - open.from;
        stretches.push_back(open);
        open.from = edit.offset + edit.taken;
        open.to += stretches.back().size + edit.put.size();
    }
    open.size = size - open.from;
    stretches.push_back(open);
    std::erase_if(stretches, [](const Stretch& stretch) { return stretch.size == 0; });
    return stretches;
}

NewPlaces::NewPlaces(const EditList& edits) {
    std::uint64_t moved = 0;
    mSteps.reserve(edits.size());
    for (const Edit& edit : edits) {
        moved += edit.put.size() - edit.taken;
        mSteps.push_back({edit.offset, edit.offset + edit.taken, moved, KeepsLength(edit)});
    }
}

std::optional<std::uint64_t> NewPlaces::Of(std::uint64_t offset) const {
    const auto next = std::upper_bound(mSteps.begin(), mSteps.end(), offset,
                                       [](std::uint64_t place, const Step& step) { return place < step.end; });
    if (next != mSteps.end() && next->begin <= offset && !next->keepsLength) {
        return std::nullopt;
    }
    return offset + (next == mSteps.begin() ? 0 : std::prev(next)->moved);
}

EditList InverseOf(const EditList& edits, const ByteReader& old) {
    EditList inverse;
    std::uint64_t moved = 0;
    for (const Edit& edit : edits) {
        Edit back{edit.offset + moved, edit.put.size(), std::string(static_cast<std::size_t>(edit.taken), '\0')};
        old.Read(edit.offset, back.put.data(), back.put.size());
        moved += edit.put.size() - edit.taken;
        inverse.push_back(std::move(back));
    }
    return inverse;
}

bool AreInOrder(const EditList& edits, std::uint64_t size) {
    std::uint64_t free = 0;
    for (const Edit& edit : edits) {
        if (edit.offset < free || edit.offset > size || edit.taken > size - edit.offset) {
            return false;
        }
        free = edit.offset + edit.taken + 1;
    }
    return true;
}

} // namespace zonstory

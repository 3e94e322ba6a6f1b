#include "clip/layout/BoxEdits.h"

#include <algorithm>
#include <utility>

#include "clip/layout/NumberBytes.h"

namespace zonstory {

namespace {

// What is put between two bytes comes in front of what replaces the second of them.
void Sort(EditList& edits) {
    std::stable_sort(edits.begin(), edits.end(), [](const Edit& left, const Edit& right) {
        return std::pair(left.offset, left.taken > 0) < std::pair(right.offset, right.taken > 0);
    });
}

EditList Joined(EditList edits) {
    EditList joined;
    for (Edit& edit : edits) {
        if (!joined.empty() && joined.back().offset + joined.back().taken == edit.offset) {
            joined.back().taken += edit.taken;
            joined.back().put += edit.put;
        } else {
            joined.push_back(std::move(edit));
        }
    }
    return joined;
}

} // namespace

void BoxEdits::Replace(ByteRange taken, std::string put) {
    mEdits.push_back({taken.offset, taken.size, std::move(put)});
}

void BoxEdits::Resize(const Box& box, std::uint64_t size) {
    if (!box.isOpen) {
        Replace({box.offset, box.header}, BoxHeader(box.type, size, box.header));
    }
}

void BoxEdits::Clear(const Box& box) {
    constexpr std::uint64_t kType = 4;
    const ByteRange content = box.Content();
    Replace({box.offset + kType, kType}, BigBytes(FourCharacters("free"), kType));
    Replace(content, std::string(static_cast<std::size_t>(content.size), '\0'));
}

EditList BoxEdits::Take(const ByteReader& file, const IsoIndex& index) {
    EditList edits = std::exchange(mEdits, {});
    Sort(edits);
    const PositionMap map(edits, file.Size());
    for (const PositionTable& table : index.tables) {
        if (std::optional<std::string> bytes = FollowPositions(file, table, map)) {
            edits.push_back({table.offset, table.Size(), std::move(*bytes)});
        }
    }
    Sort(edits);
    return Joined(std::move(edits));
}

} // namespace zonstory

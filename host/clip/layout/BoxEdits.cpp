#include "clip/layout/BoxEdits.h"

#include <utility>

#include "clip/layout/EditOrder.h"
#include "clip/layout/NumberBytes.h"

namespace zonstory {

namespace {

// What has to follow the edits, added to a list.
EditList Followed(const ByteReader& file, const IsoIndex& index, const EditList& edits, EditList to) {
    const PositionMap map(edits, file.Size());
    for (const PositionTable& table : index.tables) {
        if (std::optional<std::string> bytes = FollowPositions(file, table, map)) {
            to.push_back({table.offset, table.Size(), std::move(*bytes)});
        }
    }
    return to;
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
    const EditList edits = InOrder(std::exchange(mEdits, {}));
    EditList followed = InOrder(Followed(file, index, edits, edits));
    if (followed != edits) { // positions may lead to each other's tables, which change as well
        Followed(file, index, followed, {});
    }
    return followed;
}

} // namespace zonstory

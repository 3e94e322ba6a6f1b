#include "clip/layout/EditOrder.h"

#include <algorithm>
#include <utility>

namespace zonstory {

EditList InOrder(EditList edits) {
    std::stable_sort(edits.begin(), edits.end(),
                     [](const Edit& left, const Edit& right) { return left.offset < right.offset; });
    EditList joined;
    for (Edit& edit : edits) {
        if (joined.empty() || joined.back().offset + joined.back().taken < edit.offset) {
            joined.push_back(std::move(edit));
            continue;
        }
        joined.back().taken += edit.taken;
        joined.back().put += edit.put;
    }
    return joined;
}

void AddOverwrite(const ByteReader& file, std::uint64_t offset, std::string bytes, EditList& edits) {
    std::string old(bytes.size(), '\0');
    file.Read(offset, old.data(), old.size());
    if (bytes != old) {
        edits.push_back({offset, old.size(), std::move(bytes)});
    }
}

} // namespace zonstory

#pragma once

#include <string>
#include <string_view>

#include "clip/layout/Edit.h"

/// Edits of files that are held in memory.
namespace support {

/// The new version. For edits that lie within `old`, one behind the other.
inline std::string Applied(std::string_view old, const zonstory::EditList& edits) {
    std::string bytes;
    std::size_t done = 0;
    for (const zonstory::Edit& edit : edits) {
        bytes.append(old.substr(done, edit.offset - done)).append(edit.put);
        done = edit.offset + edit.taken;
    }
    return bytes.append(old.substr(done));
}

/// What makes `old` again out of Applied(old, edits).
inline zonstory::EditList Inverse(std::string_view old, const zonstory::EditList& edits) {
    zonstory::EditList inverse;
    std::uint64_t moved = 0; // modulo 2^64: bytes may become fewer
    for (const zonstory::Edit& edit : edits) {
        inverse.push_back({edit.offset + moved, edit.put.size(), std::string(old.substr(edit.offset, edit.taken))});
        moved += edit.put.size() - edit.taken;
    }
    return inverse;
}

/// Whether the edits are what every list of them is: in ascending order, none touching another, all within `old`, and
/// each a change.
inline bool IsWellFormed(std::string_view old, const zonstory::EditList& edits) {
    std::uint64_t free = 0;
    for (const zonstory::Edit& edit : edits) {
        const bool isWithin = edit.offset <= old.size() && edit.taken <= old.size() - edit.offset;
        if (!isWithin || edit.offset < free || old.substr(edit.offset, edit.taken) == edit.put) {
            return false;
        }
        free = edit.offset + edit.taken + 1;
    }
    return true;
}

} // namespace support

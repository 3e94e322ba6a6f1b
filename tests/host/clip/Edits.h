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

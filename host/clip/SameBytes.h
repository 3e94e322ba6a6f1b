#pragma once

#include <optional>
#include <string>
#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"
#include "files/Checksum.h"

namespace zonstory {

/// Of two versions of a file, as Hasher tells them; empty where none were asked for.
struct Checksums {
    std::string before;
    std::string after;
};

/// Proves that a file is what a list of edits makes of another: that it has the length, in each edit's place what was put
/// there, and everywhere else the old bytes. As the bytes taken out are known, the inverse list then makes the old file
/// again.
/// @param unread  Of the old file, in ascending order: what is not to be compared.
/// @param hash    Of both, from the bytes that are read anyway; what is not compared is read in the old file for it.
/// @throws ClipError when it is not; ClipInterrupted.
Checksums RequireEdited(const ByteReader& old, const EditList& edits, const ByteReader& made,
                        const std::vector<ByteRange>& unread, std::optional<HashKind> hash = {});

} // namespace zonstory

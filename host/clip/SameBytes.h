#pragma once

#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

/// Proves that a file is what a list of edits makes of another: that it has the length, in each edit's place what was put
/// there, and everywhere else the old bytes. As the bytes taken out are known, the inverse list then makes the old file
/// again.
/// @param unread  Of the old file, in ascending order: what is not to be compared.
/// @throws ClipError when it is not; ClipInterrupted.
void RequireEdited(const ByteReader& old, const EditList& edits, const ByteReader& made,
                   const std::vector<ByteRange>& unread);

} // namespace zonstory

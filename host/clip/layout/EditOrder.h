#pragma once

#include <string>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

/// Edits as an EditList has them: sorted, and those that touch made one. Of two at one place the first stays first.
EditList InOrder(EditList edits);

/// Adds the edit that puts bytes in the place of as many others, unless they are there already. @throws FileError
void AddOverwrite(const ByteReader& file, std::uint64_t offset, std::string bytes, EditList& edits);

} // namespace zonstory

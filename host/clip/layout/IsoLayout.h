#pragma once

#include "clip/layout/ContainerLayout.h"

namespace zonstory {

/// Whether the file begins as one of the ISO base media family does: MP4, M4V, M4A, 3GP, QuickTime.
bool IsIsoMedia(const ByteReader& file);

/// Its layout. @throws DamagedFile, NoExactWay as ReadLayout().
std::unique_ptr<ContainerLayout> ReadIsoMedia(const ByteReader& file);

} // namespace zonstory

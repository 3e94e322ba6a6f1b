#pragma once

#include "clip/layout/ContainerLayout.h"

namespace zonstory {

/// Whether the file begins as AIFF and AIFF-C do.
bool IsAiff(const ByteReader& file);

/// Its layout. @throws DamagedFile, NoExactWay as ReadLayout().
std::unique_ptr<ContainerLayout> ReadAiff(const ByteReader& file);

} // namespace zonstory

#pragma once

#include "clip/layout/ContainerLayout.h"

namespace zonstory {

/// Whether the file begins as RIFF does, or as its forms beyond 4 GB, RF64 and BW64.
bool IsRiff(const ByteReader& file);

/// The layout of a WAV or AVI. @throws DamagedFile, NoExactWay as ReadLayout().
std::unique_ptr<ContainerLayout> ReadRiff(const ByteReader& file);

} // namespace zonstory

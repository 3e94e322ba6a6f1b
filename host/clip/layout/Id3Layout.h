#pragma once

#include "clip/layout/ContainerLayout.h"

namespace zonstory {

/// Whether the file begins with an ID3v2 tag or a frame of MPEG layer III.
bool IsMp3(const ByteReader& file);

/// The layout of an MP3. @throws DamagedFile, NoExactWay as ReadLayout().
std::unique_ptr<ContainerLayout> ReadMp3(const ByteReader& file);

} // namespace zonstory

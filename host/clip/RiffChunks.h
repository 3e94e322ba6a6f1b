#pragma once

#include <vector>

#include "clip/Essence.h"
#include "files/ByteReader.h"

namespace zonstory {

/// Where the media lies in files made of chunks. All throw ClipError when a chunk reaches beyond the file's end.

/// The `data` of a WAV, also of one beyond 4 GB (RF64, BW64).
std::vector<ByteRange> FindWaveMedia(const ByteReader& file);
/// The `movi` of an AVI, one for each of its parts.
std::vector<ByteRange> FindAviMedia(const ByteReader& file);
/// The `SSND` of an AIFF.
std::vector<ByteRange> FindAiffMedia(const ByteReader& file);

} // namespace zonstory

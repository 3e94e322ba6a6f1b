#pragma once

#include <vector>

#include <zonstoryparser/XMPFiles.h>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

namespace zonstory {

/// Where the media itself lies in a file: everything that is picture and sound, and no metadata.
struct Essence {
    bool isKnown = false;     ///< Else nobody here knows the format that closely.
    bool mustNotMove = false; ///< The file names positions in its media in ways that are not checked.
    std::vector<ByteRange> ranges;
};

/// @throws ClipError when the file is truncated or otherwise no whole file of its format.
Essence FindEssence(const ByteReader& file, XMP_FileFormat format);

/// Compares the media of two files, byte by byte. Both have to be read for a hash of each as well, which costs more and
/// proves less.
/// @throws ClipError when they differ; ClipInterrupted.
void RequireSameEssence(const ByteReader& before, const Essence& essenceBefore, const ByteReader& after,
                        const Essence& essenceAfter);

} // namespace zonstory

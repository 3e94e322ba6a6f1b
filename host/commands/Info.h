#pragma once

#include <string>

#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct InfoOptions {
    StoryFile story;
    Format format = Format::Text;
};

/// What a story holds: the version report as the library words it, counts, streams, tags and scenes. As CSV, the
/// streams and the scenes alone make no common table, so CSV has one row of counts.
/// @return An ExitCode.
/// @throws zonscreenplay::ReadError
int RunInfo(const InfoOptions& options, Output& output);

/// The JSON Schema of its document.
Json InfoSchema();

} // namespace zonstory

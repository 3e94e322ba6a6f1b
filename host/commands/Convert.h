#pragma once

#include <string>

#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct ConvertOptions {
    StoryFile story;
    std::string target; ///< Its ending decides the format: .skrx, or one of Fountain's.
};

/// Writes the screenplay anew: as a story file that reads back as the same model, or as Fountain with the same scenes,
/// numbers, speakers and words.
/// @return An ExitCode.
/// @throws zonscreenplay::ReadError, OutputError, UsageError for an ending that means neither; nothing is then written.
int RunConvert(const ConvertOptions& options, Output& output);

} // namespace zonstory

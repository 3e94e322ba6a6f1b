#pragma once

#include <string>

#include "output/Format.h"
#include "output/Json.h"
#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct CheckOptions {
    StoryFile story;
    Format format = Format::Text;
};

/// Prints what a script coordinator should look at before the shoot, by line. A story that cannot be read whole is
/// itself a finding, and the only one.
/// @return An ExitCode: kDone also with findings, kStoryUnread for a malformed story.
/// @throws zonscreenplay::ReadError when the file cannot be opened or read at all.
int RunCheck(const CheckOptions& options, Output& output);

/// The JSON Schema of its document.
Json CheckSchema();

} // namespace zonstory

#pragma once

#include <string>
#include <vector>

#include "output/Output.h"
#include "story/StoryReader.h"

namespace zonstory {

struct PacketsOptions {
    StoryFile story;
    std::vector<std::string> scenes; ///< By number or position; none for all.
    std::string target;              ///< A folder, made if need be, or "-" for standard output.
};

/// Writes the packet of each scene into a file of its own, named after the scene's number, and prints the names; or all
/// packets one behind the other. A scene that yields no packet is passed over with a note.
/// @return An ExitCode.
/// @throws zonscreenplay::ReadError, SceneSelectionError, OutputError
int RunPackets(const PacketsOptions& options, Output& output);

} // namespace zonstory

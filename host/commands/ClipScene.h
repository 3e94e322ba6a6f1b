#pragma once

#include <string>
#include <vector>

#include "clip/Clip.h"
#include "commands/ScriptReference.h"

namespace zonstory {

/// What a clip carries of a script, UTF-8; empty where it carries nothing.
struct ClipScene {
    std::string clip; ///< As the user named it; any bytes.
    Target target = Target::Inside;
    std::string file; ///< The file that holds it, absolute; any bytes.
    std::string scene;
    std::string setting;
    std::string location;
    std::string timeOfDay;
    std::string shotName;
    std::string shotNumber;
    std::string durationValue;
    std::string durationScale;
    std::string action;
    struct Speech {
        std::string character;
        std::string dialogue;
    };
    std::vector<Speech> dialogue;
    ScriptReference script;
    std::string contradiction; ///< As in ClipContents, as the next.
    std::vector<std::string> notes;
};

/// @throws ClipError, XMP_Error
ClipScene ReadClipScene(const std::filesystem::path& clip, const ClipOptions& options);

} // namespace zonstory

#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include <zonstoryparser/Story.h>

#include "commands/ScriptReference.h"
#include "story/SceneSelection.h"

/// What the program writes into a clip for a scene: the heading's parts, action and dialogue as the library writes them,
/// and the scene number (its position, "007", for a scene without one), which people look for first.
///
/// Not the shot name, which is often the camera's or the logger's own and would be lost; and not the duration that the
/// script plans, which would stand in for the clip's real one.
namespace zonstory {

/// Why the metadata could not be changed, in the user's language.
class SceneSyncError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Makes `xmp` say this scene and nothing of another one: what the scene does not have is removed, so that a clip
/// written for another scene before keeps none of its words.
/// The script is named along with it where that changes anything. A clip that says the scene already keeps the name of the
/// script it was written from: a draft that leaves a scene alone is no reason to touch its clips.
/// @return The paths that may have changed: those the library reports, then the scene number's, then the script's.
/// @throws SceneSyncError, XMP_Error; `xmp` may then be half done.
std::vector<zonmetadata::Path> WriteScene(const SelectedScene& selected, const ScriptReference& script, SXMPMeta& xmp);

/// Removes what WriteScene() writes, whoever wrote it, and nothing else.
/// @return As WriteScene().
/// @throws SceneSyncError, XMP_Error; `xmp` may then be half done.
std::vector<zonmetadata::Path> ClearScene(SXMPMeta& xmp);

/// A path as people write it: "xmpScript:dialogSequence[2]/xmpScript:character".
std::string PathText(const zonmetadata::Path& path);

} // namespace zonstory

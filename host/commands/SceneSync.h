#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include <zonstoryparser/Story.h>

#include "commands/ScriptReference.h"
#include "match/SceneNumbers.h"
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

/// What becomes of a clip that says something of a scene already.
enum class Existing {
    Replaced,        ///< It is written over.
    OtherSceneStays, ///< It stays as it is where it names another scene.
    Stays,           ///< It stays as it is in any case.
};

struct SceneToWrite {
    SelectedScene selected;
    const SceneNumbers& numbers; ///< Of the story's scenes, in its order.
    const ScriptReference& script;
    Existing existing = Existing::Replaced;
};

/// What was done to a clip's metadata.
struct SceneChange {
    std::vector<zonmetadata::Path> paths; ///< That may have changed: what the library reports, then the scene number's,
                                          ///< then the script's.
    std::vector<std::string> notes;       ///< What the user may want to know, a line each: "keeps the slate 3B".
};

/// A clip is left alone, since of what it says nothing may be replaced; what() says so.
class SceneStays : public std::runtime_error {
public:
    SceneStays(const std::string& reason, bool isOfAnotherScene)
        : std::runtime_error(reason), mIsOfAnotherScene(isOfAnotherScene) {}
    bool IsOfAnotherScene() const { return mIsOfAnotherScene; }

private:
    bool mIsOfAnotherScene;
};

/// Makes `xmp` say this scene and nothing of another one: what the scene does not have is removed, so that a clip
/// written for another scene before keeps none of its words. A number that names the scene as a slate does, "3B" for
/// scene 3, says more than the scene's own, and stays.
/// The script is named along with it where that changes anything. A clip that says the scene already keeps the name of the
/// script it was written from: a draft that leaves a scene alone is no reason to touch its clips.
/// @throws SceneStays, with `xmp` as it was; SceneSyncError, XMP_Error: it may then be half done.
SceneChange WriteScene(const SceneToWrite& scene, SXMPMeta& xmp);

/// Removes what WriteScene() writes, and nothing else: heading, action and dialogue, whoever wrote them, and the number that
/// it wrote. A slate that stayed then stays now, and so does a location beside which nothing of a script stands.
/// @throws SceneSyncError, XMP_Error; `xmp` may then be half done.
SceneChange ClearScene(SXMPMeta& xmp);

/// A path as people write it: "xmpScript:dialogSequence[2]/xmpScript:character".
std::string PathText(const zonmetadata::Path& path);

} // namespace zonstory

#include <algorithm>

#include <zonstoryparser/SceneContent.h>

#include "sync/ChangedPaths.h"
#include "sync/LocalizedMessage.h"
#include "toolkit/ToolkitSilence.h"
#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

namespace {

constexpr char kSceneHeadingError[] = "$$$/zonstoryparser/SceneHeadingError=Error writing scene heading to XMP";
constexpr char kActionTextError[] = "$$$/zonstoryparser/ActionTextError=Error writing action text to XMP";
constexpr char kCharacterDialogError[] =
    "$$$/zonstoryparser/CharacterDialogError=Error writing character dialogue to XMP";

// On purpose: a scene without a heading leaves the clip's old heading alone. Held by the tests WriteSceneMetadata.
bool WriteHeading(const SceneContent& content, SXMPMeta& xmp, ChangedPaths& changed) {
    if (content.heading.empty()) {
        return true;
    }
    if (!WriteSceneHeadingToXMP(content.setting, content.location, content.timeOfDay, xmp)) {
        return false;
    }
    AppendHeadingPaths(changed);
    return true;
}

// On purpose: an empty action writes nothing, and is reported all the same. Held by the tests WriteSceneMetadata.
bool WriteAction(const UString& action, SXMPMeta& xmp, ChangedPaths& changed) {
    if (!WriteActionToXMP(action, xmp)) {
        return false;
    }
    changed.push_back(PathOf(kActionProperty));
    return true;
}

// On purpose: the array's own path is reported when it comes into being and at no other time, not even when it shrinks
// to nothing; and writing is tried also after a failed delete. Held by the tests WriteSceneMetadata.
bool RebuildDialogue(const std::vector<CharacterDialogue>& dialogues, SXMPMeta& xmp, ChangedPaths& changed) {
    const XMP_Index oldCount = CountItems(kDialogSequenceProperty, xmp);
    const bool isDeleted = DeleteCharacterDialogueFromXMP(xmp);
    const bool isWritten = WriteCharacterDialogueToXMP(dialogues, xmp);
    if (!isDeleted || !isWritten) {
        return false;
    }
    const auto newCount = static_cast<XMP_Index>(dialogues.size()); // the array was made anew, an item a record
    const zonmetadata::Path array = PathOf(kDialogSequenceProperty);
    if (oldCount == 0 && newCount > 0) {
        changed.push_back(array);
    }
    AppendArrayItemLeafPaths(changed, array, std::max(oldCount, newCount));
    return true;
}

} // namespace

UString WriteSceneMetadataIntoXMP(boost::intrusive_ptr<Scene> scene, SXMPMeta& xmp,
                                  std::vector<zonmetadata::Path>& changed) {
    const ToolkitSilence silence; // one for all the calls below
    RegisterNamespaces();
    const SceneContent content = GatherSceneContent(*scene);
    if (!WriteHeading(content, xmp, changed)) {
        return LocalizedMessage(kSceneHeadingError);
    }
    if (!WriteAction(content.action, xmp, changed)) {
        return LocalizedMessage(kActionTextError);
    }
    if (!RebuildDialogue(content.dialogues, xmp, changed)) {
        return LocalizedMessage(kCharacterDialogError);
    }
    return {};
}

} // namespace zonstoryparser

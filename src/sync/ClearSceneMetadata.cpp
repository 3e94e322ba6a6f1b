#include <zonstoryparser/Story.h>

#include "sync/ChangedPaths.h"
#include "sync/LocalizedMessage.h"
#include "toolkit/ToolkitSilence.h"
#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

namespace {

constexpr char kDeleteSceneHeadingError[] =
    "$$$/zonstoryparser/DeleteSceneHeadingError=Error deleting scene heading from XMP";
constexpr char kDeleteActionTextError[] =
    "$$$/zonstoryparser/DeleteActionTextError=Error deleting action text from XMP";
constexpr char kDeleteCharacterDialogError[] =
    "$$$/zonstoryparser/DeleteCharacterDialogError=Error deleting character dialogue from XMP";

} // namespace

// On purpose: the array's own path is never reported, although the array goes. Held by the tests ClearSceneMetadata.
UString ClearSceneMetadataFromXMP(SXMPMeta& xmp, std::vector<zonmetadata::Path>& changed) {
    const ToolkitSilence silence; // one for all the calls below
    RegisterNamespaces();
    if (!DeleteSceneHeadingFromXMP(xmp)) {
        return LocalizedMessage(kDeleteSceneHeadingError);
    }
    AppendHeadingPaths(changed);
    if (!DeleteActionFromXMP(xmp)) {
        return LocalizedMessage(kDeleteActionTextError);
    }
    changed.push_back(PathOf(kActionProperty));

    const XMP_Index count = CountItems(kDialogSequenceProperty, xmp);
    if (!DeleteCharacterDialogueFromXMP(xmp)) {
        return LocalizedMessage(kDeleteCharacterDialogError);
    }
    AppendArrayItemLeafPaths(changed, PathOf(kDialogSequenceProperty), count);
    return {};
}

} // namespace zonstoryparser

#include <algorithm>
#include <string>
#include <utility>

#include <zonstoryparser/Story.h>

#include "script/SceneText.h"
#include "toolkit/ToolkitSilence.h"

namespace zonstoryparser {

namespace {

// 7 becomes "007". The sign counts as one of the three and stands behind the filling, as a stream formats an int.
UString SceneNumberFromIndex(std::int32_t sceneIndex) {
    constexpr std::size_t kWidth = 3;
    const std::string digits = std::to_string(sceneIndex);
    return UString(kWidth - std::min(kWidth, digits.size()), u'0') +
           zoncore::AsciiToUTF16(digits.data(), digits.size());
}

// Writes the heading's parts, and joins them for the shot's name.
UString WriteHeading(const UString& sceneHeading, SXMPMeta& xmp) {
    UString setting;
    UString location;
    UString timeOfDay;
    ParseSceneHeading(sceneHeading, setting, location, timeOfDay);
    WriteSceneHeadingToXMP(setting, location, timeOfDay, xmp);

    UString joined;
    for (const UString* part : {&setting, &location, &timeOfDay}) {
        if (!part->empty()) {
            joined += (joined.empty() ? u"" : u" - ") + *part;
        }
    }
    return joined;
}

} // namespace

bool GetSceneXMP(boost::intrusive_ptr<Talewright>, boost::intrusive_ptr<Scene> scene, std::int32_t sceneIndex,
                 std::vector<ShotXMP>& shots) {
    RegisterNamespaces();
    UString sceneNumber = scene->sceneNumber.empty() ? SceneNumberFromIndex(sceneIndex) : scene->sceneNumber;
    SceneText text = GatherSceneText(*scene);
    PushShotXMP(text.firstParagraphID, std::move(sceneNumber), 0, scene->shotDuration, text.heading, text.action,
                text.dialogues, shots);
    return true;
}

// On purpose: what a writer reports is not looked at, so that a value XMP refuses costs the packet that value alone;
// and no shot number is written. Held by the tests ShotBreakdown.
void PushShotXMP(UString& shotID, UString sceneNumber, std::int32_t, UString shotDuration, UString& sceneHeading,
                 UString& action, std::vector<CharacterDialogue>& dialogues, std::vector<ShotXMP>& shots) {
    if (shotID.empty() || (action.empty() && dialogues.empty() && sceneHeading.empty())) {
        return;
    }
    const ToolkitSilence silence; // one for all the calls below
    SXMPMeta xmp;
    UString shotName;
    if (!sceneHeading.empty()) {
        shotName = WriteHeading(sceneHeading, xmp);
    }
    if (!shotName.empty()) {
        shotName += u" - ";
    }
    shotName += sceneNumber;

    WriteShotNameToXMP(shotName, xmp);
    WriteSceneNumberToXMP(sceneNumber, xmp);
    WriteShotDurationToXMP(shotDuration, xmp);
    WriteActionToXMP(action, xmp);
    WriteCharacterDialogueToXMP(dialogues, xmp);

    ShotXMP shot{shotID, {}};
    xmp.SerializeToBuffer(&shot.xmpPacket, 0, 0, "", "", 0);
    shots.push_back(std::move(shot));

    shotID.clear();
    action.clear();
    dialogues.clear();
}

} // namespace zonstoryparser

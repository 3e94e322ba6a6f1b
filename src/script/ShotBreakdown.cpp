#include <algorithm>
#include <string>
#include <utility>

#include <zonstoryparser/SceneContent.h>

#include "toolkit/ToolkitSilence.h"

namespace zonstoryparser {

namespace {

bool SaysNothing(const UString& heading, const UString& action, const std::vector<CharacterDialogue>& dialogues) {
    return heading.empty() && action.empty() && dialogues.empty();
}

// Writes the heading's parts, and joins them for the shot's name.
UString WriteAndNameHeading(const UString& sceneHeading, SXMPMeta& xmp) {
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
    SceneContent content = GatherSceneContent(*scene);
    PushShotXMP(content.firstParagraphID, SceneNumberToWrite(*scene, sceneIndex), 0, scene->shotDuration,
                content.heading, content.action, content.dialogues, shots);
    return true;
}

// On purpose: what a writer reports is not looked at, so that a value XMP refuses costs the packet what that one writer
// had still to write, and nothing else; and no shot number is written. Held by the tests ShotBreakdown.
void PushShotXMP(UString& shotID, UString sceneNumber, std::int32_t, UString shotDuration, UString& sceneHeading,
                 UString& action, std::vector<CharacterDialogue>& dialogues, std::vector<ShotXMP>& shots) {
    if (shotID.empty() || SaysNothing(sceneHeading, action, dialogues)) {
        return;
    }
    const ToolkitSilence silence; // one for all the calls below
    SXMPMeta xmp;
    UString shotName;
    if (!sceneHeading.empty()) {
        shotName = WriteAndNameHeading(sceneHeading, xmp);
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

// 7 becomes "007". The sign counts as one of the three and stands behind the filling, as a stream formats an int.
UString SceneNumberToWrite(const Scene& scene, std::int32_t sceneIndex) {
    if (!scene.sceneNumber.empty()) {
        return scene.sceneNumber;
    }
    constexpr std::size_t kWidth = 3;
    const std::string digits = std::to_string(sceneIndex);
    return UString(kWidth - std::min(kWidth, digits.size()), u'0') +
           zoncore::AsciiToUTF16(digits.data(), digits.size());
}

NoPacketReason WhyNoPacket(const Scene& scene) {
    if (std::all_of(scene.paragraphs.begin(), scene.paragraphs.end(), [](const auto& each) { return !each; })) {
        return NoPacketReason::NoParagraphs;
    }
    const SceneContent content = GatherSceneContent(scene);
    if (content.firstParagraphID.empty()) {
        return NoPacketReason::NoIdentity;
    }
    return SaysNothing(content.heading, content.action, content.dialogues) ? NoPacketReason::NothingSaid
                                                                           : NoPacketReason::None;
}

} // namespace zonstoryparser

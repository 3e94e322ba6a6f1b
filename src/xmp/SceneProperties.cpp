#include <zonstoryparser/Story.h>

#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

bool WriteSceneHeadingToXMP(const UString& setting, const UString& location, const UString& timeOfDay, SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        SetValueUnlessEmpty(kSceneSettingProperty, setting, xmp);
        SetValueUnlessEmpty(kShotLocationProperty, location, xmp);
        SetValueUnlessEmpty(kSceneTimeOfDayProperty, timeOfDay, xmp);
        return true;
    });
}

// On purpose: an empty scene number is stored, unlike every other empty text. Held by the tests SceneProperties.
bool WriteSceneNumberToXMP(const UString& sceneNumber, SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        SetValue(kSceneNumberProperty, sceneNumber, xmp);
        return true;
    });
}

bool WriteShotNameToXMP(const UString& shotName, SXMPMeta& xmp) {
    return WritePropertyUnlessEmpty(kShotNameProperty, shotName, xmp);
}

// On purpose: shot numbers belong to the camera's side and are never written here. Held by the tests SceneProperties.
bool WriteShotNumberToXMP(int, SXMPMeta&) {
    return true;
}

bool WriteActionToXMP(const UString& action, SXMPMeta& xmp) {
    return WritePropertyUnlessEmpty(kActionProperty, action, xmp);
}

bool GetSceneSettingFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kSceneSettingProperty, xmp, options, value);
}

bool GetShotLocationFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kShotLocationProperty, xmp, options, value);
}

bool GetSceneTimeOfDayFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kSceneTimeOfDayProperty, xmp, options, value);
}

bool GetSceneNumberFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kSceneNumberProperty, xmp, options, value);
}

bool GetShotNameFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kShotNameProperty, xmp, options, value);
}

bool GetShotNumberFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kShotNumberProperty, xmp, options, value);
}

bool GetActionFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadProperty(kActionProperty, xmp, options, value);
}

bool DeleteSceneHeadingFromXMP(SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        DeleteIfPresent(kSceneSettingProperty, xmp);
        DeleteIfPresent(kShotLocationProperty, xmp);
        DeleteIfPresent(kSceneTimeOfDayProperty, xmp);
        return true;
    });
}

bool DeleteSceneNumberFromXMP(SXMPMeta& xmp) {
    return DeleteProperty(kSceneNumberProperty, xmp);
}

bool DeleteShotNameFromXMP(SXMPMeta& xmp) {
    return DeleteProperty(kShotNameProperty, xmp);
}

bool DeleteShotNumberFromXMP(SXMPMeta& xmp) {
    return DeleteProperty(kShotNumberProperty, xmp);
}

bool DeleteActionFromXMP(SXMPMeta& xmp) {
    return DeleteProperty(kActionProperty, xmp);
}

} // namespace zonstoryparser

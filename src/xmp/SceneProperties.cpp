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
    return WriteUnlessEmpty(kShotNameProperty, shotName, xmp);
}

// On purpose: shot numbers belong to the camera's side and are never written here. Held by the tests SceneProperties.
bool WriteShotNumberToXMP(int, SXMPMeta&) {
    return true;
}

bool WriteActionToXMP(const UString& action, SXMPMeta& xmp) {
    return WriteUnlessEmpty(kActionProperty, action, xmp);
}

bool GetSceneSettingFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kSceneSettingProperty, xmp, options, value);
}

bool GetShotLocationFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kShotLocationProperty, xmp, options, value);
}

bool GetSceneTimeOfDayFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kSceneTimeOfDayProperty, xmp, options, value);
}

bool GetSceneNumberFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kSceneNumberProperty, xmp, options, value);
}

bool GetShotNameFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kShotNameProperty, xmp, options, value);
}

bool GetShotNumberFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kShotNumberProperty, xmp, options, value);
}

bool GetActionFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return Read(kActionProperty, xmp, options, value);
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
    return Delete(kSceneNumberProperty, xmp);
}

bool DeleteShotNameFromXMP(SXMPMeta& xmp) {
    return Delete(kShotNameProperty, xmp);
}

bool DeleteShotNumberFromXMP(SXMPMeta& xmp) {
    return Delete(kShotNumberProperty, xmp);
}

bool DeleteActionFromXMP(SXMPMeta& xmp) {
    return Delete(kActionProperty, xmp);
}

} // namespace zonstoryparser

#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

void SetValue(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp) {
    xmp.SetProperty(property.schemaNS, property.name, zoncore::UTF16to8(value));
}

void SetValueUnlessEmpty(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp) {
    if (!value.empty()) {
        SetValue(property, value, xmp);
    }
}

void DeleteIfPresent(const ScriptProperty& property, SXMPMeta& xmp) {
    xmp.DeleteProperty(property.schemaNS, property.name); // looks for it by itself, and leaves it at that
}

XMP_Index CountItems(const ScriptProperty& array, const SXMPMeta& xmp) {
    return xmp.CountArrayItems(array.schemaNS, array.name);
}

bool WritePropertyUnlessEmpty(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        SetValueUnlessEmpty(property, value, xmp);
        return true;
    });
}

bool ReadProperty(const ScriptProperty& property, SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return FalseOnToolkitError([&] { return xmp.GetProperty(property.schemaNS, property.name, value, options); });
}

bool DeleteProperty(const ScriptProperty& property, SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        DeleteIfPresent(property, xmp);
        return true;
    });
}

} // namespace zonstoryparser

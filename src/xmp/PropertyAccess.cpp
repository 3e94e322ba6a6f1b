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

bool WriteUnlessEmpty(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        SetValueUnlessEmpty(property, value, xmp);
        return true;
    });
}

bool Read(const ScriptProperty& property, SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return FalseOnToolkitError([&] { return xmp.GetProperty(property.schemaNS, property.name, value, options); });
}

bool Delete(const ScriptProperty& property, SXMPMeta& xmp) {
    return FalseOnToolkitError([&] {
        DeleteIfPresent(property, xmp);
        return true;
    });
}

} // namespace zonstoryparser

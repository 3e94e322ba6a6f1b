#pragma once

#include <string>

#include <zoncore/UString.h>
#include <zonstoryparser/XMPToolkit.h>

#include "xmp/ScriptProperties.h"

namespace zonstoryparser {

/// Runs a step of an accessor: its own result, or false when the toolkit fails, whose message is dropped. All other
/// exceptions pass.
template <typename Step>
bool FalseOnToolkitError(Step step) {
    try {
        return step();
    } catch (const XMP_Error&) {
        return false;
    }
}

/// @name The steps that the accessors are made of; each throws what the toolkit throws.
/// @{

/// Stores `value` as it is, also when it is empty.
void SetValue(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp);

/// Stores `value` unless it is empty.
void SetValueUnlessEmpty(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp);

/// Removes the property, if it exists, with all beneath it.
void DeleteIfPresent(const ScriptProperty& property, SXMPMeta& xmp);

/// The number of an array's items; 0 when it does not exist.
XMP_Index CountItems(const ScriptProperty& array, const SXMPMeta& xmp);
/// @}

/// @name Accessors of one simple property
/// @{
bool WritePropertyUnlessEmpty(const ScriptProperty& property, const zoncore::UString& value, SXMPMeta& xmp);
bool ReadProperty(const ScriptProperty& property, SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
bool DeleteProperty(const ScriptProperty& property, SXMPMeta& xmp);
/// @}

} // namespace zonstoryparser

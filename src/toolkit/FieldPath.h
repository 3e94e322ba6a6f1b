#pragma once

#include <string>

namespace zonstoryparser {

/// Appends the step to a field, such as "/xmpScript:character", to the path of a struct. The toolkit's C interface has no
/// calls for fields, so a field is named by a path with the prefix of its namespace.
/// @throws XMP_Error for an unknown namespace, or a name that a path would take for more than one step.
void AppendField(std::string& path, const char* fieldNS, const char* fieldName);

} // namespace zonstoryparser

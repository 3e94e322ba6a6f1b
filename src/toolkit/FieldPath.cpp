#include "toolkit/FieldPath.h"

#include <string_view>

#include "toolkit/ToolkitCall.h"

namespace zonstoryparser {

void AppendField(std::string& path, const char* fieldNS, const char* fieldName) {
    constexpr const char* kOperation = "cannot name the field";
    std::string prefix;
    if (!SXMPMeta::GetNamespacePrefix(fieldNS, &prefix)) {
        ThrowToolkitError(kXMPErr_BadSchema, kOperation, PropertySubject(fieldNS, fieldName));
    }
    const std::string_view field = fieldName != nullptr ? fieldName : "";
    if (field.find_first_of("/[:") != std::string_view::npos) { // more than one step, which a path would take as such
        ThrowToolkitError(kXMPErr_BadXPath, kOperation, PropertySubject(fieldNS, fieldName));
    }
    path.reserve(path.size() + 1 + prefix.size() + field.size());
    path.append("/").append(prefix).append(field);
}

} // namespace zonstoryparser

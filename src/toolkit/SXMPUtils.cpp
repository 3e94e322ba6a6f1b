#include <zonstoryparser/XMPToolkit.h>

#include "toolkit/ToolkitCall.h"

void SXMPUtils::ComposeArrayItemPath(const char* schemaNS, const char* arrayName, XMP_Index index, std::string* path) {
    const auto refuse = [&](std::int32_t id) {
        zonstoryparser::ThrowToolkitError(id, "cannot name an item of",
                                          zonstoryparser::PropertySubject(schemaNS, arrayName));
    };
    if (!SXMPMeta::GetNamespacePrefix(schemaNS, nullptr)) {
        refuse(kXMPErr_BadSchema);
    }
    if (arrayName == nullptr || *arrayName == '\0') {
        refuse(kXMPErr_BadXPath);
    }
    if (index <= 0 && index != kXMP_ArrayLastItem) {
        refuse(kXMPErr_BadIndex);
    }
    const std::string step = index == kXMP_ArrayLastItem ? "last()" : std::to_string(index);
    path->assign(arrayName).append("[").append(step).append("]");
}

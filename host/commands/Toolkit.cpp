#include "commands/Toolkit.h"

#include <stdexcept>

#include <zonstoryparser/Story.h>

namespace zonstory {

// The namespaces are registered once here, so that readers find them before anything was written.
Toolkit::Toolkit() {
    if (!SXMPMeta::Initialize()) {
        throw std::runtime_error("the XMP toolkit does not start");
    }
    zonstoryparser::RegisterNamespaces();
}

Toolkit::~Toolkit() {
    SXMPMeta::Terminate();
}

} // namespace zonstory

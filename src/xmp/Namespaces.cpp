#include <string>

#include <zonstoryparser/Story.h>

#include "xmp/ScriptProperties.h"

namespace zonstoryparser {

const char* kXMP_NS_SCRIPT_Prefix = "xmpScript";
const char* kXMP_NS_DM_Prefix = "xmpDM";
const char* kXMP_NS_DC_Prefix = "dc";

// Which prefix the toolkit settles on does not matter: every property is addressed by namespace URI.
void RegisterNamespaces() {
    std::string registeredPrefix;
    SXMPMeta::RegisterNamespace(kDynamicMediaNamespaceURI, kXMP_NS_DM_Prefix, &registeredPrefix);
    SXMPMeta::RegisterNamespace(kDublinCoreNamespaceURI, kXMP_NS_DC_Prefix, &registeredPrefix);
    SXMPMeta::RegisterNamespace(kScriptNamespaceURI, kXMP_NS_SCRIPT_Prefix, &registeredPrefix);
}

} // namespace zonstoryparser

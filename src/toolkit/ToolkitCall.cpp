#include "toolkit/ToolkitCall.h"

#include <utility>

#include <exempi/xmperrors.h>

namespace zonstoryparser {

namespace {

// The toolkit gives its own texts to standard error alone.
const char* Reason(std::int32_t id) {
    static constexpr std::pair<std::int32_t, const char*> kReasons[] = {
        {kXMPErr_Unavailable, "SXMPMeta::Initialize() has not been called"},
        {kXMPErr_BadObject, "the object has been moved from"},
        {kXMPErr_BadParam, "invalid value"},
        {kXMPErr_InternalFailure, "internal failure"},
        {kXMPErr_ExternalFailure, "failure of the file system"},
        {-XMPErr_NoMemory, "out of memory"},
        {kXMPErr_BadSchema, "the namespace is empty or not registered"},
        {kXMPErr_BadXPath, "the path is malformed or does not fit the property's form"},
        {kXMPErr_BadOptions, "the options contradict each other or the value"},
        {kXMPErr_BadIndex, "the array index is out of range"},
        {-XMPErr_BadParse, "the text cannot be parsed"},
        {kXMPErr_BadSerialize, "the packet does not fit"},
        {kXMPErr_BadFileFormat, "the file is not what its format requires"},
        {-XMPErr_NoFileHandler, "no handler knows the file"},
        {kXMPErr_BadXML, "not well-formed XML"},
        {-XMPErr_BadRDF, "not valid RDF"},
        {-XMPErr_BadXMP, "not valid XMP"},
        {kXMPErr_BadUnicode, "a character that XML cannot hold"},
    };
    for (const auto& [candidate, reason] : kReasons) {
        if (candidate == id) {
            return reason;
        }
    }
    return "the toolkit refused";
}

} // namespace

std::int32_t LastToolkitError() {
    return -xmp_get_error();
}

void ThrowToolkitError(std::int32_t id, const char* operation, const std::string& subject) {
    std::string message = operation;
    if (!subject.empty()) {
        message += ' ' + subject;
    }
    message += std::string(": ") + Reason(id) + " (XMP error " + std::to_string(id) + ')';
    throw XMP_Error(id, std::move(message));
}

std::string PropertySubject(const char* schemaNS, const char* name) {
    return std::string("property '") + (name != nullptr ? name : "") + "' of '" +
           (schemaNS != nullptr ? schemaNS : "") + '\'';
}

} // namespace zonstoryparser

// The toolkit's errors that reach a host, caught as their type, with id and message, on this thread and carried to another.
#include <cstring>
#include <exception>
#include <string>
#include <thread>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/Story.h>

#include "Require.h"

using namespace zonstoryparser;

namespace {

void Register() {
    kXMP_NS_SCRIPT_Prefix = "1:";
    RegisterNamespaces();
}

void Count() {
    SXMPMeta clip;
    clip.SetProperty(zonmetadata::kScriptNamespaceURI, "dialogSequence", "no array");
    std::vector<zonmetadata::Path> changed;
    ClearSceneMetadataFromXMP(clip, changed);
}

void Create() {
    SXMPMeta clip("no packet", 9);
}

void Serialize() {
    constexpr XMP_OptionBits kReadOnlyPacket = 0x20;
    std::string packet;
    SXMPMeta().SerializeToBuffer(&packet, kXMP_OmitPacketWrapper | kReadOnlyPacket, 0, "", "", 0);
}

bool IsAsPromised(const XMP_Error& error, std::int32_t id) {
    const std::string message = error.GetErrMsg();
    return error.GetID() == id && message == error.what() &&
           message.find("(XMP error " + std::to_string(id) + ')') != std::string::npos;
}

void Require(void (*call)(), std::int32_t id) {
    std::exception_ptr thrown;
    try {
        call();
    } catch (const XMP_Error& error) {
        REQUIRE(IsAsPromised(error, id));
        thrown = std::current_exception();
    }
    REQUIRE(thrown);
    std::thread([&] {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::exception& error) {
            const auto* known = dynamic_cast<const XMP_Error*>(&error);
            REQUIRE(known != nullptr && IsAsPromised(XMP_Error(*known), id));
        }
    }).join();
}

} // namespace

int main() {
    REQUIRE(SXMPMeta::Initialize());
    const char* const usual = kXMP_NS_SCRIPT_Prefix;
    Require(Register, kXMPErr_BadXPath);
    kXMP_NS_SCRIPT_Prefix = usual;
    Require(Count, kXMPErr_BadXPath);
    Require(Create, kXMPErr_BadXML);
    Require(Serialize, kXMPErr_BadOptions);
    SXMPMeta::Terminate();
}

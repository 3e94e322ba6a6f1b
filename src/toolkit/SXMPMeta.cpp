#include <algorithm>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

#include <exempi/xmp.h>
#include <exempi/xmperrors.h>

#include <zonstoryparser/XMPToolkit.h>

#include "toolkit/FieldPath.h"
#include "toolkit/ToolkitCall.h"
#include "toolkit/ToolkitRun.h"
#include "toolkit/ToolkitString.h"
#include "toolkit/ToolkitText.h"

using zonstoryparser::CallToolkit;
using zonstoryparser::PropertySubject;
using zonstoryparser::ThrowToolkitError;
using zonstoryparser::ToolkitString;
using zonstoryparser::ToolkitText;

namespace {

XmpPtr Handle(void* object) {
    return static_cast<XmpPtr>(object);
}

XmpPtr ThrowIfNull(XmpPtr handle) {
    if (handle == nullptr) {
        throw std::bad_alloc();
    }
    return handle;
}

XmpPtr NewEmpty() {
    return ThrowIfNull(CallToolkit("cannot create metadata", [] { return xmp_new_empty(); }));
}

XmpPtr Parse(const char* packet, std::size_t length) {
    constexpr const char* kOperation = "cannot parse the packet";
    if (length > std::numeric_limits<std::uint32_t>::max()) { // more than the toolkit counts
        ThrowToolkitError(kXMPErr_BadParam, kOperation, {});
    }
    return ThrowIfNull(CallToolkit(kOperation, [&] { return xmp_new(length == 0 ? "" : packet, length); }));
}

void Free(void* object) {
    if (object != nullptr) {
        xmp_free(Handle(object));
    }
}

std::string FieldPath(const char* structName, const char* fieldNS, const char* fieldName) {
    std::string path = structName != nullptr ? structName : "";
    zonstoryparser::AppendField(path, fieldNS, fieldName);
    return path;
}

// Path and text of what is stored are sound: an exception of the standard library inside the toolkit then is memory that
// ran out. Taken for a refusal, it would cost a packet the value without a word. Held by the tests MemoryShortage.
template <typename Call>
auto TellMemoryShortage(Call call) {
    try {
        return call();
    } catch (const XMP_Error& error) {
        if (error.GetID() == -XMPErr_StdException) {
            throw std::bad_alloc();
        }
        throw;
    }
}

template <typename Call>
void Store(const char* operation, const char* schemaNS, const char* name, Call call) {
    TellMemoryShortage([&] { return CallToolkit(operation, call, [&] { return PropertySubject(schemaNS, name); }); });
}

} // namespace

bool SXMPMeta::Initialize() {
    return zonstoryparser::StartToolkit();
}

void SXMPMeta::Terminate() {
    zonstoryparser::EndToolkit();
}

bool SXMPMeta::RegisterNamespace(const char* namespaceURI, const char* suggestedPrefix, std::string* registeredPrefix) {
    const ToolkitString prefix;
    const bool isSuggested = CallToolkit(
        "cannot register", [&] { return xmp_register_namespace(namespaceURI, suggestedPrefix, prefix.Get()); },
        [&] { return PropertySubject(namespaceURI, suggestedPrefix); });
    if (registeredPrefix != nullptr) {
        prefix.AssignTo(*registeredPrefix);
    }
    return isSuggested;
}

bool SXMPMeta::GetNamespacePrefix(const char* namespaceURI, std::string* prefix) {
    if (namespaceURI == nullptr || *namespaceURI == '\0') {
        return false;
    }
    const ToolkitString registered;
    const bool isKnown = TellMemoryShortage([&] { // what is stored in a field begins with this
        return CallToolkit("cannot look up the namespace",
                           [&] { return xmp_namespace_prefix(namespaceURI, registered.Get()); });
    });
    if (isKnown && prefix != nullptr) {
        registered.AssignTo(*prefix);
    }
    return isKnown;
}

SXMPMeta::SXMPMeta() : mObject(NewEmpty()) {}
SXMPMeta::SXMPMeta(const char* packet, std::size_t length) : mObject(Parse(packet, length)) {}

// The toolkit's own copy shares the original's tree, so that a change in one would show in both.
SXMPMeta::SXMPMeta(const SXMPMeta& other) : mObject(nullptr) {
    std::string packet;
    other.SerializeToBuffer(&packet, kXMP_OmitPacketWrapper, 0, "", "", 0);
    mObject = Parse(packet.data(), packet.size());
}

SXMPMeta::SXMPMeta(SXMPMeta&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}

SXMPMeta& SXMPMeta::operator=(const SXMPMeta& other) {
    return *this = SXMPMeta(other);
}

SXMPMeta& SXMPMeta::operator=(SXMPMeta&& other) noexcept {
    std::swap(mObject, other.mObject);
    return *this;
}

SXMPMeta::~SXMPMeta() {
    Free(mObject);
}

bool SXMPMeta::GetProperty(const char* schemaNS, const char* name, std::string* value, XMP_OptionBits* options) const {
    const ToolkitString found;
    XMP_OptionBits foundOptions = 0; // the toolkit clears the caller's word for a property that is missing
    const bool exists = CallToolkit(
        "cannot read", [&] { return xmp_get_property(Handle(mObject), schemaNS, name, found.Get(), &foundOptions); },
        [&] { return PropertySubject(schemaNS, name); });
    if (exists && value != nullptr) {
        found.AssignTo(*value);
    }
    if (exists && options != nullptr) {
        *options = foundOptions;
    }
    return exists;
}

void SXMPMeta::SetProperty(const char* schemaNS, const char* name, const std::string& value, XMP_OptionBits options) {
    const ToolkitText text(value);
    Store("cannot write", schemaNS, name,
          [&] { return xmp_set_property(Handle(mObject), schemaNS, name, text.CString(), options); });
}

void SXMPMeta::DeleteProperty(const char* schemaNS, const char* name) {
    CallToolkit(
        "cannot delete", [&] { return xmp_delete_property(Handle(mObject), schemaNS, name); },
        [&] { return PropertySubject(schemaNS, name); });
}

bool SXMPMeta::DoesPropertyExist(const char* schemaNS, const char* name) const {
    return CallToolkit(
        "cannot look up", [&] { return xmp_has_property(Handle(mObject), schemaNS, name); },
        [&] { return PropertySubject(schemaNS, name); });
}

bool SXMPMeta::GetStructField(const char* schemaNS, const char* structName, const char* fieldNS, const char* fieldName,
                              std::string* value, XMP_OptionBits* options) const {
    return GetProperty(schemaNS, FieldPath(structName, fieldNS, fieldName).c_str(), value, options);
}

void SXMPMeta::SetStructField(const char* schemaNS, const char* structName, const char* fieldNS, const char* fieldName,
                              const std::string& value, XMP_OptionBits options) {
    SetProperty(schemaNS, FieldPath(structName, fieldNS, fieldName).c_str(), value, options);
}

void SXMPMeta::AppendArrayItem(const char* schemaNS, const char* arrayName, XMP_OptionBits arrayOptions,
                               const char* itemValue, XMP_OptionBits itemOptions) {
    const std::string value = itemValue != nullptr ? itemValue : "";
    const ToolkitText text(value);
    Store("cannot append to", schemaNS, arrayName, [&] {
        return xmp_append_array_item(Handle(mObject), schemaNS, arrayName, arrayOptions,
                                     itemValue != nullptr ? text.CString() : nullptr, itemOptions);
    });
}

// The C interface has no count. An item is found by its index at once, however long the array, so the last one is found
// in logarithmic time by doubling and halving.
XMP_Index SXMPMeta::CountArrayItems(const char* schemaNS, const char* arrayName) const {
    XMP_OptionBits options = 0;
    if (!GetProperty(schemaNS, arrayName, nullptr, &options)) {
        return 0;
    }
    if ((options & kXMP_PropValueIsArray) == 0) {
        ThrowToolkitError(kXMPErr_BadXPath, "cannot count the items of", PropertySubject(schemaNS, arrayName));
    }
    const auto hasItem = [&](XMP_Index index) {
        std::string path;
        SXMPUtils::ComposeArrayItemPath(schemaNS, arrayName, index, &path);
        return DoesPropertyExist(schemaNS, path.c_str());
    };
    XMP_Index present = 0;
    XMP_Index absent = 1;
    while (hasItem(absent)) {
        present = absent;
        absent = std::min(absent, std::numeric_limits<XMP_Index>::max() / 2) * 2;
    }
    while (absent - present > 1) {
        const XMP_Index middle = present + (absent - present) / 2;
        (hasItem(middle) ? present : absent) = middle;
    }
    return present;
}

void SXMPMeta::SerializeToBuffer(std::string* packet, XMP_OptionBits options, std::uint32_t padding,
                                 const char* newline, const char* indent, std::int32_t baseIndent) const {
    const ToolkitString buffer;
    CallToolkit("cannot serialize the metadata", [&] {
        return xmp_serialize_and_format(Handle(mObject), buffer.Get(), options, padding, newline, indent, baseIndent);
    });
    buffer.AssignTo(*packet);
}

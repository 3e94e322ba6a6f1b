// A host that uses the toolkit itself, before, while and after it uses the library, on two threads.
#include <string>
#include <thread>

#include <exempi/xmp.h>
#include <exempi/xmpconsts.h>

#include <zonstoryparser/Story.h>

#include "Require.h"

namespace {

void UseToolkit() {
    XmpPtr own = ::xmp_new_empty();
    XmpStringPtr value = ::xmp_string_new();
    for (int i = 0; i < 500; ++i) {
        const std::string text = std::to_string(i);
        REQUIRE(::xmp_set_property(own, NS_DC, "source", text.c_str(), 0));
        REQUIRE(::xmp_get_property(own, NS_DC, "source", value, nullptr) && text == ::xmp_string_cstr(value));
        REQUIRE(::xmp_append_array_item(own, NS_DC, "subject", XMP_PROP_ARRAY_IS_UNORDERED, text.c_str(), 0));
    }
    REQUIRE(::xmp_serialize(own, value, 0, 0));
    ::xmp_string_free(value);
    ::xmp_free(own);
}

void UseLibrary() {
    REQUIRE(SXMPMeta::Initialize());
    for (int i = 0; i < 100; ++i) {
        SXMPMeta clip;
        std::string action;
        REQUIRE(zonstoryparser::WriteActionToXMP(u"Rain.", clip));
        REQUIRE(zonstoryparser::GetActionFromXMP(clip, nullptr, &action) && action == "Rain.");
        try {
            SXMPMeta refused("no packet", 9);
            REQUIRE(false);
        } catch (const XMP_Error& error) {
            REQUIRE(error.GetID() == kXMPErr_BadXML);
        }
    }
    SXMPMeta::Terminate();
}

} // namespace

int main() {
    REQUIRE(::xmp_init());
    for (int round = 0; round < 10; ++round) {
        std::thread other(UseToolkit);
        UseLibrary();
        UseToolkit(); // the library's end is not the host's
        other.join();
    }
    ::xmp_terminate();
}

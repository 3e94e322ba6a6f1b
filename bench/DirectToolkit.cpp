#include "DirectToolkit.h"

#include <exempi/xmp.h>

#include <zonmetadata/SchemaNamespaces.h>

namespace bench {

namespace {

const char* const kScript = zonmetadata::kScriptNamespaceURI;
const char* const kDynamicMedia = zonmetadata::kDynamicMediaNamespaceURI;

XmpPtr Handle(void* xmp) {
    return static_cast<XmpPtr>(xmp);
}

void SetHeadingAndAction(XmpPtr xmp, const DirectScene& scene) {
    xmp_set_property(xmp, kScript, "sceneSetting", scene.setting.c_str(), 0);
    xmp_set_property(xmp, kDynamicMedia, "shotLocation", scene.location.c_str(), 0);
    xmp_set_property(xmp, kScript, "sceneTimeOfDay", scene.timeOfDay.c_str(), 0);
    xmp_set_property(xmp, kScript, "action", scene.action.c_str(), 0);
}

void AppendItems(XmpPtr xmp, const std::vector<std::pair<std::string, std::string>>& dialogue) {
    for (const auto& [speaker, speech] : dialogue) {
        xmp_append_array_item(xmp, kScript, "dialogSequence", XMP_PROP_ARRAY_IS_ORDERED, nullptr,
                              XMP_PROP_VALUE_IS_STRUCT);
        xmp_set_property(xmp, kScript, "dialogSequence[last()]/xmpScript:character", speaker.c_str(), 0);
        xmp_set_property(xmp, kScript, "dialogSequence[last()]/xmpScript:dialog", speech.c_str(), 0);
    }
}

} // namespace

std::string DirectPacket(const DirectScene& scene) {
    const XmpPtr xmp = xmp_new_empty();
    SetHeadingAndAction(xmp, scene);
    xmp_set_property(xmp, kDynamicMedia, "shotName", scene.shotName.c_str(), 0);
    xmp_set_property(xmp, kDynamicMedia, "scene", scene.sceneNumber.c_str(), 0);
    xmp_set_property(xmp, kDynamicMedia, "duration/xmpDM:scale", "1/1", 0);
    xmp_set_property(xmp, kDynamicMedia, "duration/xmpDM:value", scene.seconds.c_str(), 0);
    AppendItems(xmp, scene.dialogue);
    const XmpStringPtr buffer = xmp_string_new();
    xmp_serialize_and_format(xmp, buffer, 0, 0, "", "", 0);
    std::string packet(xmp_string_cstr(buffer), xmp_string_len(buffer));
    xmp_string_free(buffer);
    xmp_free(xmp);
    return packet;
}

DirectMetadata::DirectMetadata() : mXMP(xmp_new_empty()) {}

DirectMetadata::~DirectMetadata() {
    xmp_free(Handle(mXMP));
}

void DirectMetadata::WriteClipProperties(const DirectScene& scene) {
    SetHeadingAndAction(Handle(mXMP), scene);
    DeleteDialogue();
    AppendDialogue(scene.dialogue);
}

void DirectMetadata::AppendDialogue(const std::vector<std::pair<std::string, std::string>>& dialogue) {
    AppendItems(Handle(mXMP), dialogue);
}

std::size_t DirectMetadata::ReadDialogue(std::size_t items) const {
    const XmpStringPtr value = xmp_string_new();
    std::size_t bytes = 0;
    for (std::size_t item = 1; item <= items; ++item) {
        const std::string path = "dialogSequence[" + std::to_string(item) + "]/xmpScript:";
        for (const char* const field : {"character", "dialog"}) {
            xmp_get_property(Handle(mXMP), kScript, (path + field).c_str(), value, nullptr);
            bytes += xmp_string_len(value);
        }
    }
    xmp_string_free(value);
    return bytes;
}

void DirectMetadata::DeleteDialogue() {
    xmp_delete_property(Handle(mXMP), kScript, "dialogSequence");
}

std::size_t DirectMetadata::CountDialogue() const {
    const auto hasItem = [this](std::size_t item) {
        const std::string path = "dialogSequence[" + std::to_string(item) + "]";
        return xmp_has_property(Handle(mXMP), kScript, path.c_str());
    };
    std::size_t present = 0;
    std::size_t absent = 1;
    for (; hasItem(absent); absent *= 2) {
        present = absent;
    }
    while (absent - present > 1) {
        const std::size_t middle = (present + absent) / 2;
        (hasItem(middle) ? present : absent) = middle;
    }
    return present;
}

} // namespace bench

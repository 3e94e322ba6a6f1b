#include "commands/ScriptReference.h"

#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include <fmt/format.h>
#include <xxhash.h>

#include <zonstoryparser/Story.h>

#include "story/SceneSelection.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr char kMediaManagement[] = "http://ns.adobe.com/xap/1.0/mm/";
constexpr char kResourceRef[] = "http://ns.adobe.com/xap/1.0/sType/ResourceRef#";
constexpr char kIngredients[] = "Ingredients";
constexpr std::string_view kScheme = "zonstory-script:"; // in front of the digest; tells our item from others'

constexpr std::string_view kPart = "/content/scene/"; // in front of the number of the scene that a clip shows

// Where a title page says which draft it is, the plainest first.
constexpr std::string_view kLabelKeys[] = {"revision", "draft", "version", "draft date", "date"};

class Digest {
public:
    Digest() : mState(XXH3_createState(), &XXH3_freeState) { XXH3_128bits_reset(mState.get()); }

    // With its end, so that no two texts flow into one another.
    void Add(std::string_view text) {
        XXH3_128bits_update(mState.get(), text.data(), text.size());
        XXH3_128bits_update(mState.get(), "", 1);
    }

    std::string Text() const {
        XXH128_canonical_t bytes;
        XXH128_canonicalFromHash(&bytes, XXH3_128bits_digest(mState.get()));
        std::string text = "xxh128:";
        for (const unsigned char byte : bytes.digest) {
            text += fmt::format("{:02x}", byte);
        }
        return text;
    }

private:
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> mState;
};

std::string DigestOf(const zonstoryparser::Talewright& story) {
    Digest digest;
    for (const SelectedScene& selected : SceneSelection(story).All()) {
        digest.Add(zoncore::UTF16to8(selected.scene->sceneNumber));
        for (const auto& paragraph : selected.scene->paragraphs) {
            if (paragraph) {
                zoncore::UString text;
                zonstoryparser::GetTextRuns(paragraph, text);
                digest.Add(std::to_string(paragraph->element));
                digest.Add(zoncore::UTF16to8(text));
            }
        }
    }
    return digest.Text();
}

std::string LabelOf(const Story& story) {
    for (const std::string_view wanted : kLabelKeys) {
        for (const auto& [key, value] : story.titlePage) {
            if (LowerCase(key) == wanted && !value.empty()) {
                return value;
            }
        }
    }
    return {};
}

std::string Field(const SXMPMeta& xmp, const std::string& item, const char* name) {
    std::string value;
    xmp.GetStructField(kMediaManagement, item.c_str(), kResourceRef, name, &value, nullptr);
    return value;
}

std::string ItemPath(XMP_Index index) {
    std::string path;
    SXMPUtils::ComposeArrayItemPath(kMediaManagement, kIngredients, index, &path);
    return path;
}

// Nothing where the property has another form.
std::optional<XMP_Index> CountItems(const SXMPMeta& xmp) try {
    return xmp.CountArrayItems(kMediaManagement, kIngredients);
} catch (const XMP_Error&) {
    return std::nullopt;
}

// The path of our item; empty where there is none.
std::string FindItem(const SXMPMeta& xmp) {
    for (XMP_Index index = CountItems(xmp).value_or(0); index > 0; --index) {
        std::string path = ItemPath(index);
        if (Field(xmp, path, "documentID").starts_with(kScheme)) {
            return path;
        }
    }
    return {};
}

} // namespace

ScriptReference ReferenceTo(const Story& story, const StoryFile& file) {
    const std::string name = file.path == "-" ? std::string() : std::filesystem::path(file.path).filename().string();
    return {zoncore::UTF16to8(zoncore::UTF8to16(name)), LabelOf(story), DigestOf(*story.root), {}};
}

ScriptReference ReadScriptReference(const SXMPMeta& xmp) {
    const std::string item = FindItem(xmp);
    if (item.empty()) {
        return {};
    }
    const std::string part = Field(xmp, item, "fromPart");
    return {Field(xmp, item, "filePath"), Field(xmp, item, "versionID"),
            Field(xmp, item, "documentID").substr(kScheme.size()),
            part.starts_with(kPart) ? part.substr(kPart.size()) : std::string()};
}

void WriteScriptReference(const ScriptReference& reference, SXMPMeta& xmp) {
    if (!CountItems(xmp)) {
        return;
    }
    ClearScriptReference(xmp);
    xmp.AppendArrayItem(kMediaManagement, kIngredients, kXMP_PropValueIsArray, nullptr, kXMP_PropValueIsStruct);
    const std::string item = ItemPath(*CountItems(xmp));
    const auto set = [&](const char* name, const std::string& value) {
        if (!value.empty()) {
            xmp.SetStructField(kMediaManagement, item.c_str(), kResourceRef, name, value);
        }
    };
    set("documentID", std::string(kScheme) + reference.digest);
    set("versionID", reference.label);
    set("filePath", reference.name);
    set("fromPart", reference.scene.empty() ? std::string() : std::string(kPart) + reference.scene);
}

bool ClearScriptReference(SXMPMeta& xmp) {
    const std::string item = FindItem(xmp);
    if (item.empty()) {
        return false;
    }
    xmp.DeleteProperty(kMediaManagement, CountItems(xmp) == 1 ? kIngredients : item.c_str());
    return true;
}

zonmetadata::Path ScriptReferencePath() {
    return zonmetadata::PathForSchemaNameAndPropertyName(kMediaManagement, kIngredients);
}

} // namespace zonstory

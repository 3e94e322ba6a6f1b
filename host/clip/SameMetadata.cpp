#include "clip/SameMetadata.h"

#include <algorithm>
#include <string_view>

namespace zonstory {

namespace {

// Serialized with these, a property starts on a line of its own with exactly this indentation and markup behind it. A
// value never looks like that: the toolkit writes its line feeds and angle brackets as references.
constexpr const char* kNewline = "\n";
constexpr const char* kIndent = " ";
constexpr std::string_view kPropertyStart = "\n   <";
constexpr std::string_view kPropertyEnd = "\n   </";
constexpr std::string_view kDescriptionEnd = "\n  </rdf:Description>";
constexpr std::string_view kAbout = "rdf:about=\"";

// The position of the next property at or behind `from`.
std::size_t NextProperty(std::string_view text, std::size_t from) {
    std::size_t found = text.find(kPropertyStart, from);
    while (found != std::string_view::npos && text.substr(found).starts_with(kPropertyEnd)) {
        found = text.find(kPropertyStart, found + 1);
    }
    return found;
}

std::vector<std::string> SplitProperties(std::string_view text) {
    std::vector<std::string> properties;
    std::size_t start = NextProperty(text, 0);
    while (start != std::string_view::npos) {
        const std::size_t end = NextProperty(text, start + 1);
        properties.emplace_back(text.substr(start, end - start));
        start = end;
    }
    std::sort(properties.begin(), properties.end());
    return properties;
}

std::string FindAbout(std::string_view text) {
    const std::size_t found = text.find(kAbout);
    if (found == std::string_view::npos) {
        return {};
    }
    const std::size_t start = found + kAbout.size();
    return std::string(text.substr(start, text.find('"', start) - start));
}

bool IsDigest(const std::string& property) {
    const std::size_t nameEnd = property.find_first_of(" />", kPropertyStart.size());
    return property.substr(0, nameEnd).find(":NativeDigest") != std::string::npos;
}

} // namespace

MetadataContent::MetadataContent(const SXMPMeta& xmp) {
    std::string text;
    xmp.SerializeToBuffer(&text, kXMP_OmitPacketWrapper, 0, kNewline, kIndent, 0);
    mAbout = FindAbout(text);
    mProperties = SplitProperties(std::string_view(text).substr(0, text.find(kDescriptionEnd)));
}

bool MetadataContent::IsWhatWasWritten(const MetadataContent& written) const {
    return *this == written || WithoutDigests() == written.WithoutDigests();
}

MetadataContent MetadataContent::WithoutDigests() const {
    MetadataContent rest = *this;
    std::erase_if(rest.mProperties, IsDigest);
    return rest;
}

} // namespace zonstory

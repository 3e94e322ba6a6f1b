#include "clip/packet/MetadataContent.h"

namespace zonstory {

namespace {

// Serialized with these, a property starts on a line of its own with exactly this indentation and markup behind it. A
// value never looks like that: the toolkit writes its line feeds and angle brackets as references.
constexpr const char* kNewline = "\n";
constexpr const char* kIndent = " ";
constexpr std::string_view kPropertyStart = "\n   <";
constexpr std::string_view kPropertyEnd = "\n   </";
constexpr std::string_view kDescription = "\n  <rdf:Description";
constexpr std::string_view kDescriptionEnd = "\n  </rdf:Description>";

// The position of the next property at or behind `from`.
std::size_t NextProperty(std::string_view text, std::size_t from) {
    std::size_t found = text.find(kPropertyStart, from);
    while (found != std::string_view::npos && text.substr(found).starts_with(kPropertyEnd)) {
        found = text.find(kPropertyStart, found + 1);
    }
    return found;
}

std::string_view Between(std::string_view text, std::string_view before, std::string_view behind) {
    const std::size_t found = text.find(before);
    if (found == std::string_view::npos) {
        return {};
    }
    const std::size_t start = found + before.size();
    return text.substr(start, text.find(behind, start) - start);
}

std::map<std::string, std::string> FindPrefixes(std::string_view tag) {
    constexpr std::string_view kDeclaration = "xmlns:";
    std::map<std::string, std::string> prefixes{{"rdf", "http://www.w3.org/1999/02/22-rdf-syntax-ns#"}};
    for (std::size_t at = tag.find(kDeclaration); at != std::string_view::npos; at = tag.find(kDeclaration, at)) {
        at += kDeclaration.size();
        const std::string_view rest = tag.substr(at);
        prefixes.emplace(rest.substr(0, rest.find('=')), Between(rest, "\"", "\""));
    }
    return prefixes;
}

} // namespace

MetadataContent::MetadataContent(const SXMPMeta& xmp) {
    std::string packet;
    xmp.SerializeToBuffer(&packet, kXMP_OmitPacketWrapper, 0, kNewline, kIndent, 0);
    const std::string_view tag = Between(packet, kDescription, ">");
    mAbout = Between(tag, "rdf:about=\"", "\"");
    mPrefixes = FindPrefixes(tag);
    const std::string_view text = std::string_view(packet).substr(0, packet.find(kDescriptionEnd));
    for (std::size_t start = NextProperty(text, 0); start != std::string_view::npos;) {
        const std::size_t end = NextProperty(text, start + 1);
        const std::string_view property = text.substr(start, end - start);
        const std::string_view name = property.substr(kPropertyStart.size());
        const std::size_t colon = name.find(':');
        const std::string_view local = name.substr(colon + 1, name.find_first_of(" />", colon) - colon - 1);
        mProperties.emplace(PropertyName(mPrefixes[std::string(name.substr(0, colon))], local), property);
        start = end;
    }
}

std::vector<PropertyName> MetadataContent::Differences(const MetadataContent& other) const {
    std::vector<PropertyName> names;
    for (const auto& [name, text] : mProperties) {
        if (other.Text(name) != text) {
            names.push_back(name);
        }
    }
    for (const auto& [name, text] : other.mProperties) {
        if (!mProperties.contains(name)) {
            names.push_back(name);
        }
    }
    return names;
}

std::string_view MetadataContent::Text(const PropertyName& name) const {
    const auto found = mProperties.find(name);
    return found == mProperties.end() ? std::string_view() : found->second;
}

} // namespace zonstory

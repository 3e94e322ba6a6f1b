#include "clip/SameMetadata.h"

#include <algorithm>
#include <iterator>
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

std::string_view NameOf(std::string_view property) {
    const std::string_view fromName = property.substr(kPropertyStart.size());
    return fromName.substr(0, fromName.find_first_of(" />"));
}

// What the toolkit's handlers write whatever they are given: marks of their own work, and a flag in every MP3.
bool IsOfHandler(std::string_view property) {
    const std::string_view name = NameOf(property);
    return name.find(":NativeDigest") != std::string_view::npos || name == "xmpDM:partOfCompilation";
}

// What the first has and the second has not; both sorted.
std::vector<std::string> Difference(const std::vector<std::string>& first, const std::vector<std::string>& second) {
    std::vector<std::string> rest;
    std::set_difference(first.begin(), first.end(), second.begin(), second.end(), std::back_inserter(rest));
    std::erase_if(rest, IsOfHandler);
    return rest;
}

} // namespace

MetadataContent::MetadataContent(const SXMPMeta& xmp) {
    std::string text;
    xmp.SerializeToBuffer(&text, kXMP_OmitPacketWrapper, 0, kNewline, kIndent, 0);
    mAbout = FindAbout(text);
    mProperties = SplitProperties(std::string_view(text).substr(0, text.find(kDescriptionEnd)));
}

bool MetadataContent::IsWhatWasWritten(const MetadataContent& written, const MetadataContent& before) const {
    const auto isFromBefore = [&](const std::string& property) {
        return std::any_of(before.mProperties.begin(), before.mProperties.end(),
                           [&](const std::string& earlier) { return NameOf(earlier) == NameOf(property); });
    };
    const std::vector<std::string> added = Difference(written.mProperties, mProperties);
    return mAbout == written.mAbout && Difference(mProperties, written.mProperties).empty() &&
           std::none_of(added.begin(), added.end(), isFromBefore);
}

} // namespace zonstory

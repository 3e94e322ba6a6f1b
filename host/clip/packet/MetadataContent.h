#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <zonstoryparser/XMPToolkit.h>

namespace zonstory {

/// A property at the top of a packet: the URI of its namespace, and its name there.
using PropertyName = std::pair<std::string, std::string>;

/// What metadata says, in a form that can be compared: the object it is about, and every property with all beneath it as
/// one text. The order of the properties is left out, since it means nothing and a property that is deleted and written
/// again moves behind the others; the order within a property counts.
class MetadataContent {
public:
    MetadataContent() = default; ///< That of no metadata at all.
    /// @throws XMP_Error when the toolkit cannot serialize it.
    explicit MetadataContent(const SXMPMeta& xmp);

    bool operator==(const MetadataContent& other) const {
        return mAbout == other.mAbout && mProperties == other.mProperties;
    }

    /// The names of all properties that are not the same in both, those that one of the two lacks among them.
    std::vector<PropertyName> Differences(const MetadataContent& other) const;

    /// A property as RDF, an element with the white space before it, to be put into a packet; empty for one that is not
    /// there.
    std::string_view Text(const PropertyName& name) const;
    /// The prefixes in the texts of properties, "rdf" among them, and the URIs they stand for.
    const std::map<std::string, std::string>& Prefixes() const { return mPrefixes; }

private:
    std::string mAbout;
    std::map<std::string, std::string> mPrefixes;
    std::map<PropertyName, std::string> mProperties;
};

} // namespace zonstory

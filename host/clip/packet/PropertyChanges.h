#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "clip/Clip.h"
#include "clip/packet/MetadataContent.h"

namespace zonstory {

/// The values in a property, UTF-8, by their paths, as people write them: "dc:title[1]", "dc:title[1]/?xml:lang".
/// @param rdf  As MetadataContent::Text().
std::map<std::string, std::string> ValuesOf(std::string_view rdf);

/// Every value that is not the same in both, by the order of the paths in each property.
std::vector<PropertyChange> ChangesBetween(const MetadataContent& before, const MetadataContent& after);

} // namespace zonstory

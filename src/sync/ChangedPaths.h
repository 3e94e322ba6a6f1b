#pragma once

#include <set>
#include <vector>

#include <zonmetadata/Path.h>
#include <zonstoryparser/XMPToolkit.h>

#include "xmp/ScriptProperties.h"

namespace zonmetadata {

/// Inserts a path that has no children; any other is dropped, so that only leaves enter the set.
void AddIncludePath(std::set<Path>& paths, Path path);

} // namespace zonmetadata

namespace zonstoryparser {

using ChangedPaths = std::vector<zonmetadata::Path>;

zonmetadata::Path PathOf(const ScriptProperty& property);

/// Appends the paths of setting, location and time of day.
void AppendHeadingPaths(ChangedPaths& changed);

/// Appends, for each item from 1 to `count`, the paths of its leaves: sorted and without repeats within the item, the
/// items in ascending order. The item itself is not appended.
void AppendArrayItemLeafPaths(ChangedPaths& changed, const zonmetadata::Path& array, XMP_Index count);

} // namespace zonstoryparser

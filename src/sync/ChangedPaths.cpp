#include "sync/ChangedPaths.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace zonmetadata {

void AddIncludePath(std::set<Path>& paths, Path path) {
    if (ChildPaths(path).empty()) {
        paths.insert(std::move(path));
    }
}

} // namespace zonmetadata

namespace zonstoryparser {

namespace {

// What stands behind an item's own path. The schema gives every item the same leaves, so one item is asked for all of
// them; behind a common beginning the order is the same, too.
std::vector<std::string> LeavesOfAnItem(const zonmetadata::Path& array) {
    const zonmetadata::Path item = zonmetadata::CreatePathFromArrayItem(array, 1);
    std::set<zonmetadata::Path> paths;
    for (zonmetadata::Path& leaf : zonmetadata::DescendantLeafPaths(item)) {
        zonmetadata::AddIncludePath(paths, std::move(leaf));
    }
    std::vector<std::string> leaves(paths.size());
    std::transform(paths.begin(), paths.end(), leaves.begin(), [&](const zonmetadata::Path& path) {
        return path.PropertyPath().substr(item.PropertyPath().size());
    });
    return leaves;
}

} // namespace

zonmetadata::Path PathOf(const ScriptProperty& property) {
    return zonmetadata::PathForSchemaNameAndPropertyName(property.schemaNS, property.name);
}

void AppendHeadingPaths(ChangedPaths& changed) {
    static const zonmetadata::Path kPaths[] = {PathOf(kSceneSettingProperty), PathOf(kShotLocationProperty),
                                               PathOf(kSceneTimeOfDayProperty)};
    changed.insert(changed.end(), std::begin(kPaths), std::end(kPaths));
}

void AppendArrayItemLeafPaths(ChangedPaths& changed, const zonmetadata::Path& array, XMP_Index count) {
    const std::vector<std::string> leaves = LeavesOfAnItem(array);
    const std::size_t room = changed.size() + static_cast<std::size_t>(std::max(count, 0)) * leaves.size();
    if (room > changed.capacity()) {
        changed.reserve(std::max(room, 2 * changed.size())); // at once, and still twofold for call after call
    }
    std::string steps;
    for (XMP_Index index = 1; index <= count; ++index) {
        for (const std::string& leaf : leaves) {
            steps.assign("[").append(std::to_string(index)).append("]").append(leaf);
            changed.push_back(zonmetadata::PathBeneath(array, steps));
        }
    }
}

} // namespace zonstoryparser

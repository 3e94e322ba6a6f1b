#include "sync/ChangedPaths.h"

#include <utility>

namespace zonmetadata {

void AddIncludePath(std::set<Path>& paths, Path path) {
    if (ChildPaths(path).empty()) {
        paths.insert(std::move(path));
    }
}

} // namespace zonmetadata

namespace zonstoryparser {

zonmetadata::Path PathOf(const ScriptProperty& property) {
    return zonmetadata::PathForSchemaNameAndPropertyName(property.schemaNS, property.name);
}

void AppendHeadingPaths(ChangedPaths& changed) {
    for (const ScriptProperty& property : {kSceneSettingProperty, kShotLocationProperty, kSceneTimeOfDayProperty}) {
        changed.push_back(PathOf(property));
    }
}

void AppendArrayItemLeafPaths(ChangedPaths& changed, const zonmetadata::Path& array, XMP_Index count) {
    for (XMP_Index index = 1; index <= count; ++index) {
        std::set<zonmetadata::Path> leaves;
        for (zonmetadata::Path& leaf :
             zonmetadata::DescendantLeafPaths(zonmetadata::CreatePathFromArrayItem(array, index))) {
            zonmetadata::AddIncludePath(leaves, std::move(leaf));
        }
        while (!leaves.empty()) {
            changed.push_back(std::move(leaves.extract(leaves.begin()).value()));
        }
    }
}

} // namespace zonstoryparser

#include <zonmetadata/Path.h>

#include <string>
#include <tuple>
#include <utility>

#include "SchemaForms.h"

namespace zonmetadata {

Path::Path(zoncore::UTF8String schemaNamespace, zoncore::UTF8String propertyPath)
    : mSchemaNamespace(std::move(schemaNamespace)), mPropertyPath(std::move(propertyPath)) {}

bool operator==(const Path& left, const Path& right) {
    return left.PropertyPath() == right.PropertyPath() && left.SchemaNamespace() == right.SchemaNamespace();
}

bool operator!=(const Path& left, const Path& right) {
    return !(left == right);
}

// std::string compares its characters as unsigned bytes, as the order promises.
bool operator<(const Path& left, const Path& right) {
    return std::tie(left.SchemaNamespace(), left.PropertyPath()) <
           std::tie(right.SchemaNamespace(), right.PropertyPath());
}

Path PathForSchemaNameAndPropertyName(zoncore::UTF8String schemaNamespace, zoncore::UTF8String propertyName) {
    return Path(std::move(schemaNamespace), std::move(propertyName));
}

Path CreatePathFromArrayItem(const Path& array, int index) {
    return PathForSchemaNameAndPropertyName(array.SchemaNamespace(),
                                            array.PropertyPath() + '[' + std::to_string(index) + ']');
}

std::vector<Path> ChildPaths(const Path& path) {
    std::vector<Path> children;
    for (const std::string_view field : FieldsOf(path.SchemaNamespace(), path.PropertyPath())) {
        zoncore::UTF8String childPath = path.PropertyPath();
        childPath.append("/").append(field);
        children.push_back(PathForSchemaNameAndPropertyName(path.SchemaNamespace(), std::move(childPath)));
    }
    return children;
}

std::vector<Path> DescendantLeafPaths(const Path& path) {
    return ChildPaths(path); // no struct of the known schemas holds another struct
}

} // namespace zonmetadata

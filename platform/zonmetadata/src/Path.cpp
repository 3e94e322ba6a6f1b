#include <zonmetadata/Path.h>

#include <string>
#include <tuple>
#include <utility>

#include "SchemaForms.h"

namespace zonmetadata {

Path::Path(SharedText schemaNamespace, zoncore::UTF8String propertyPath)
    : mSchemaNamespace(std::move(schemaNamespace)), mPropertyPath(std::move(propertyPath)) {}

// The schema is shared and not taken, so that `other` is left whole.
Path::Path(Path&& other) noexcept : mPropertyPath(std::move(other.mPropertyPath)) {
    mSchemaNamespace = other.mSchemaNamespace;
    other.mPropertyPath.clear();
}

Path& Path::operator=(Path&& other) noexcept {
    mSchemaNamespace = other.mSchemaNamespace;
    mPropertyPath.swap(other.mPropertyPath);
    return *this;
}

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
    return Path(std::make_shared<const zoncore::UTF8String>(std::move(schemaNamespace)), std::move(propertyName));
}

Path CreatePathFromArrayItem(const Path& array, int index) {
    return Path(array.mSchemaNamespace, array.PropertyPath() + '[' + std::to_string(index) + ']');
}

std::vector<Path> ChildPaths(const Path& path) {
    const std::span<const std::string_view> fields = FieldsOf(path.SchemaNamespace(), path.PropertyPath());
    std::vector<Path> children;
    children.reserve(fields.size());
    for (const std::string_view field : fields) {
        zoncore::UTF8String childPath;
        childPath.reserve(path.PropertyPath().size() + 1 + field.size());
        childPath.append(path.PropertyPath()).append("/").append(field);
        children.push_back(Path(path.mSchemaNamespace, std::move(childPath)));
    }
    return children;
}

std::vector<Path> DescendantLeafPaths(const Path& path) {
    return ChildPaths(path); // no struct of the known schemas holds another struct
}

} // namespace zonmetadata

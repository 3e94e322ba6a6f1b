#include <zonmetadata/Path.h>

#include <string>
#include <tuple>
#include <utility>

#include "SchemaForms.h"

namespace zonmetadata {

Path::Path(SharedText schemaNamespace, zoncore::UTF8String propertyPath)
    : mSchemaNamespace(std::move(schemaNamespace)), mPropertyPath(std::move(propertyPath)) {}

const zoncore::UTF8String& Path::SchemaNamespace() const {
    static const zoncore::UTF8String kNone;
    return mSchemaNamespace ? *mSchemaNamespace : kNone;
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
    return PathBeneath(array, '[' + std::to_string(index) + ']');
}

Path PathBeneath(const Path& path, std::string_view steps) {
    zoncore::UTF8String propertyPath;
    propertyPath.reserve(path.PropertyPath().size() + steps.size());
    propertyPath.append(path.PropertyPath()).append(steps);
    return Path(path.mSchemaNamespace, std::move(propertyPath));
}

std::vector<Path> ChildPaths(const Path& path) {
    const std::span<const std::string_view> fields = FieldsOf(path.SchemaNamespace(), path.PropertyPath());
    std::vector<Path> children;
    children.reserve(fields.size());
    for (const std::string_view field : fields) {
        children.push_back(PathBeneath(path, "/" + std::string(field)));
    }
    return children;
}

std::vector<Path> DescendantLeafPaths(const Path& path) {
    return ChildPaths(path); // no struct of the known schemas holds another struct
}

} // namespace zonmetadata

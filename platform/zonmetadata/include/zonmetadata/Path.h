#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include <zoncore/UString.h>
#include <zonmetadata/Export.h>

namespace zonmetadata {

/// Names one metadata property: a schema and a path within it. A plain value; it says nothing about whether any
/// metadata holds the property.
///
/// Paths are ordered by namespace URI first and property path second, each as a sequence of unsigned bytes, a proper
/// prefix before the longer text: so item 10 of an array sorts before item 2.
class ZONMETADATA_API Path {
public:
    /// The schema's namespace URI, UTF-8; empty once the path has been moved from.
    const zoncore::UTF8String& SchemaNamespace() const;

    /// The property path within the schema, UTF-8: "action", "dialogSequence", "dialogSequence[2]",
    /// "dialogSequence[2]/xmpScript:character".
    const zoncore::UTF8String& PropertyPath() const { return mPropertyPath; }

private:
    friend ZONMETADATA_API Path PathForSchemaNameAndPropertyName(zoncore::UTF8String schemaNamespace,
                                                                 zoncore::UTF8String propertyName);

    friend ZONMETADATA_API Path PathBeneath(const Path& path, std::string_view steps);
    using SharedText = std::shared_ptr<const zoncore::UTF8String>;

    ZONMETADATA_LOCAL Path(SharedText schemaNamespace, zoncore::UTF8String propertyPath);

    SharedText mSchemaNamespace; // one text for a property and all beneath it, as lists of paths are long
    zoncore::UTF8String mPropertyPath;
};

ZONMETADATA_API bool operator==(const Path& left, const Path& right);
ZONMETADATA_API bool operator!=(const Path& left, const Path& right);
ZONMETADATA_API bool operator<(const Path& left, const Path& right);

/// The path of a top-level property.
/// @param schemaNamespace  The namespace URI, not a prefix.
ZONMETADATA_API Path PathForSchemaNameAndPropertyName(zoncore::UTF8String schemaNamespace,
                                                      zoncore::UTF8String propertyName);

/// The path of one item of an array.
/// @param index  1 for the first item, as XMP counts.
ZONMETADATA_API Path CreatePathFromArrayItem(const Path& array, int index);

/// The path that leads on from `path`.
/// @param steps  What stands behind it: "/xmpScript:character".
ZONMETADATA_API Path PathBeneath(const Path& path, std::string_view steps);

/// The direct children that the schema gives every property of this kind: the fields of a struct. Empty for a leaf, for
/// a property the schemas do not describe, and for an array, whose items only a piece of metadata can tell.
ZONMETADATA_API std::vector<Path> ChildPaths(const Path& path);

/// Every leaf beneath `path` that the schema knows, in the order of the schema. A leaf has none beneath it.
ZONMETADATA_API std::vector<Path> DescendantLeafPaths(const Path& path);

} // namespace zonmetadata

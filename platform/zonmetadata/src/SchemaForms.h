#pragma once

#include <span>
#include <string_view>

namespace zonmetadata {

/// The qualified names of the fields of the struct that `propertyPath` names, in schema order; empty when the path
/// names no struct of a known schema. Array indices are accepted as written and not checked against anything.
std::span<const std::string_view> FieldsOf(std::string_view schemaNamespace, std::string_view propertyPath);

} // namespace zonmetadata

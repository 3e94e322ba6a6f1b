#include "SchemaForms.h"

#include <zonmetadata/SchemaNamespaces.h>

namespace zonmetadata {

namespace {

enum class Form { Struct, ArrayOfStructs };

struct StructProperty {
    std::string_view schemaNamespace;
    std::string_view name;
    Form form;
    std::span<const std::string_view> fields;
};

constexpr std::string_view kDialogFields[] = {"xmpScript:character", "xmpScript:dialog"};
constexpr std::string_view kDurationFields[] = {"xmpDM:value", "xmpDM:scale"};

constexpr StructProperty kStructProperties[] = {
    {kScriptNamespaceURI, "dialogSequence", Form::ArrayOfStructs, kDialogFields},
    {kDynamicMediaNamespaceURI, "duration", Form::Struct, kDurationFields},
};

// "[2]", "[last()]": one index and nothing behind it.
bool IsOneIndex(std::string_view text) {
    return text.size() > 2 && text.front() == '[' && text.find(']') == text.size() - 1;
}

bool Names(const StructProperty& property, std::string_view schemaNamespace, std::string_view propertyPath) {
    if (!propertyPath.starts_with(property.name) || schemaNamespace != property.schemaNamespace) {
        return false;
    }
    const std::string_view rest = propertyPath.substr(property.name.size());
    return property.form == Form::Struct ? rest.empty() : IsOneIndex(rest);
}

} // namespace

std::span<const std::string_view> FieldsOf(std::string_view schemaNamespace, std::string_view propertyPath) {
    for (const StructProperty& property : kStructProperties) {
        if (Names(property, schemaNamespace, propertyPath)) {
            return property.fields;
        }
    }
    return {};
}

} // namespace zonmetadata

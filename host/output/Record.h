#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <nlohmann/json.hpp>

#include "output/Json.h"
#include "output/Table.h"

/// Records that tell their fields once, and are printed from that list in every format.
///
///     template <>
///     const Fields<Speech>& FieldsOf<Speech>() {
///         static const Fields<Speech> fields = {{"character", "who", &Speech::character},
///                                               {"wordCount", "words", [](const Speech& speech) { ... }}};
///         return fields;
///     }
///
/// A field is a text (of any bytes), a number, a yes or no, a list, a record with fields of its own, or std::optional
/// of one of them; its type decides how JSON, a cell and the JSON Schema show it.
namespace zonstory {

template <typename Record>
class Field;

/// In the order of the columns and of the members.
template <typename Record>
using Fields = std::vector<Field<Record>>;

/// Specialised for each record, and seen before its first use.
template <typename Record>
const Fields<Record>& FieldsOf();

/// Where a field is shown: in JSON, in tables and CSV, or in both.
enum class Shown { Everywhere, InJson, InTables };

template <typename Record>
Json RecordJson(const Record& record);

/// What every record of the kind has in JSON. Further members may come, so none is ruled out.
template <typename Record>
Json RecordSchema();

/// How a value of a type is shown. This one is a record with fields of its own, which has no place in a cell.
template <typename Type>
struct Shape {
    static constexpr Align kAlign = Align::Left;
    static Json AsJson(const Type& record) { return RecordJson(record); }
    static std::string AsCell(const Type&, std::string_view) { return {}; }
    static Json Schema() { return RecordSchema<Type>(); }
};

template <typename Type>
requires std::convertible_to<Type, std::string_view>
struct Shape<Type> {
    static constexpr Align kAlign = Align::Left;
    static Json AsJson(std::string_view text) { return JsonString(text); }
    static std::string AsCell(std::string_view text, std::string_view) { return std::string(text); }
    static Json Schema() { return {{"type", "string"}}; }
};

template <>
struct Shape<std::size_t> {
    static constexpr Align kAlign = Align::Right;
    static Json AsJson(std::size_t number) { return number; }
    static std::string AsCell(std::size_t number, std::string_view) { return std::to_string(number); }
    static Json Schema() { return {{"type", "integer"}, {"minimum", 0}}; }
};

template <>
struct Shape<bool> {
    static constexpr Align kAlign = Align::Left;
    static Json AsJson(bool isSo) { return isSo; }
    static std::string AsCell(bool isSo, std::string_view) { return isSo ? "yes" : "no"; }
    static Json Schema() { return {{"type", "boolean"}}; }
};

/// A document whose members the data names.
template <>
struct Shape<Json> {
    static constexpr Align kAlign = Align::Left;
    static Json AsJson(const Json& json) { return json; }
    static std::string AsCell(const Json&, std::string_view) { return {}; }
    static Json Schema() { return {{"type", "object"}}; }
};

template <typename Type>
struct Shape<std::optional<Type>> {
    static constexpr Align kAlign = Shape<Type>::kAlign;
    static Json AsJson(const std::optional<Type>& value) { return value ? Shape<Type>::AsJson(*value) : Json(nullptr); }
    static std::string AsCell(const std::optional<Type>& value, std::string_view separator) {
        return value ? Shape<Type>::AsCell(*value, separator) : std::string();
    }
    static Json Schema() { return {{"anyOf", {Shape<Type>::Schema(), {{"type", "null"}}}}}; }
};

template <typename Type>
struct Shape<std::vector<Type>> {
    static constexpr Align kAlign = Align::Left;
    static Json AsJson(const std::vector<Type>& list) {
        Json rows = Json::array();
        for (const Type& item : list) {
            rows.push_back(Shape<Type>::AsJson(item));
        }
        return rows;
    }
    static std::string AsCell(const std::vector<Type>& list, std::string_view separator) {
        std::string cell;
        for (const Type& item : list) {
            cell.append(cell.empty() ? "" : separator).append(Shape<Type>::AsCell(item, separator));
        }
        return cell;
    }
    static Json Schema() { return {{"type", "array"}, {"items", Shape<Type>::Schema()}}; }
};

template <typename Type>
inline constexpr bool kIsNumber = std::is_same_v<Type, std::size_t> || std::is_same_v<Type, std::optional<std::size_t>>;

template <typename Record>
class Field {
public:
    /// @param name       In JSON; a column of CSV has its words parted: "timeOfDay" is "time_of_day". It never changes.
    /// @param title      Over the column of a table; null for a record that is never shown as one.
    /// @param get        A member, or a function of the record.
    /// @param separator  Between the items of a list in a cell.
    template <typename Getter>
    Field(std::string name, const char* title, Getter get, Shown shown = Shown::Everywhere,
          std::string separator = ", ")
        : mName(std::move(name)), mTitle(title != nullptr ? title : ""), mShown(shown) {
        using Type = std::remove_cvref_t<std::invoke_result_t<Getter, const Record&>>;
        using Value = Shape<Type>;
        mAlign = Value::kAlign;
        mIsNumber = kIsNumber<Type>;
        mSchema = &Value::Schema;
        mJson = [get](const Record& record) { return Value::AsJson(std::invoke(get, record)); };
        mCell = [get, separator](const Record& record) { return Value::AsCell(std::invoke(get, record), separator); };
    }

    /// As this one, but JSON leaves the member out where the value, a std::optional, is missing; and tables have the
    /// columns of such fields, all of them, where any record has a value of one.
    Field WhereTold() const {
        Field field = *this;
        field.mIsWhereTold = true;
        return field;
    }
    /// As this one, its column aligned as numbers are.
    Field ToTheRight() const {
        Field field = *this;
        field.mAlign = Align::Right;
        return field;
    }

    const std::string& Name() const { return mName; }
    bool IsWhereTold() const { return mIsWhereTold; }
    bool IsTold(const Record& record) const { return !AsJson(record).is_null(); }
    bool IsInJson() const { return mShown != Shown::InTables; }
    bool IsInTables() const { return mShown != Shown::InJson; }
    Column ItsColumn() const { return {CsvName(mName), mTitle, mAlign, mIsNumber}; }
    Json Schema() const { return mIsWhereTold ? mSchema()["anyOf"][0] : mSchema(); }
    Json AsJson(const Record& record) const { return mJson(record); }
    std::string AsCell(const Record& record) const { return mCell(record); }

private:
    std::string mName;
    std::string mTitle;
    Shown mShown;
    Align mAlign = Align::Left;
    bool mIsNumber = false;
    bool mIsWhereTold = false;
    Json (*mSchema)() = nullptr;
    std::function<Json(const Record&)> mJson;
    std::function<std::string(const Record&)> mCell;
};

template <typename Record>
Json RecordJson(const Record& record) {
    Json members = Json::object();
    for (const Field<Record>& field : FieldsOf<Record>()) {
        if (field.IsInJson() && (!field.IsWhereTold() || field.IsTold(record))) {
            members[field.Name()] = field.AsJson(record);
        }
    }
    return members;
}

template <typename Record>
Json RecordSchema() {
    Json properties = Json::object();
    Json required = Json::array();
    for (const Field<Record>& field : FieldsOf<Record>()) {
        if (field.IsInJson()) {
            properties[field.Name()] = field.Schema();
            if (!field.IsWhereTold()) {
                required.push_back(field.Name());
            }
        }
    }
    return {{"type", "object"}, {"properties", std::move(properties)}, {"required", std::move(required)}};
}

/// A row for every record.
template <typename Record>
Table RecordTable(const std::vector<Record>& records) {
    const Fields<Record>& all = FieldsOf<Record>();
    const bool isMoreTold = std::any_of(all.begin(), all.end(), [&](const Field<Record>& field) {
        return field.IsWhereTold() &&
               std::any_of(records.begin(), records.end(), [&](const Record& record) { return field.IsTold(record); });
    });
    Fields<Record> shown;
    std::vector<Column> columns;
    for (const Field<Record>& field : all) {
        if (field.IsInTables() && (isMoreTold || !field.IsWhereTold())) {
            shown.push_back(field);
            columns.push_back(field.ItsColumn());
        }
    }
    Table table(std::move(columns));
    for (const Record& record : records) {
        std::vector<std::string> cells;
        for (const Field<Record>& field : shown) {
            cells.push_back(field.AsCell(record));
        }
        table.AddRow(std::move(cells));
    }
    return table;
}

/// A whole document, as text: JsonDocument() with the record's members.
template <typename Record>
std::string DocumentText(const char* name, const Record& record) {
    Json document = JsonDocument(name, 1);
    Json members = RecordJson(record);
    for (auto& [member, value] : members.items()) {
        document[member] = std::move(value);
    }
    return JsonText(document);
}

/// The JSON Schema of such documents.
template <typename Record>
Json DocumentSchema(const char* name) {
    Json document = JsonDocument(name, 1);
    Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"}, {"title", document["schema"]}};
    schema.update(RecordSchema<Record>());
    for (auto& [member, value] : document.items()) {
        schema["properties"][member] = {{"const", value}};
        schema["required"].push_back(member);
    }
    return schema;
}

} // namespace zonstory

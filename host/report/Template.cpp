#include "report/Template.h"

#include <kainjow/mustache.hpp>
#include <nlohmann/json.hpp>

#include "output/SafeText.h"

namespace zonstory {

namespace {

namespace mustache = kainjow::mustache;

// As deep as the page's data, which the program makes itself.
mustache::data DataOf(const Json& json) {
    if (json.is_object()) {
        mustache::data object;
        for (const auto& [name, value] : json.items()) {
            object[name] = DataOf(value);
        }
        return object;
    }
    if (json.is_array()) {
        mustache::list list;
        list.reserve(json.size());
        for (const Json& item : json) {
            list.push_back(DataOf(item));
        }
        return mustache::data(list);
    }
    if (json.is_string()) {
        return mustache::data(SafePage(json.get_ref<const std::string&>()));
    }
    return json.is_boolean() ? mustache::data(json.get<bool>()) : mustache::data(json.dump());
}

} // namespace

std::string FillTemplate(const std::string& text, const Json& data) {
    mustache::mustache page(text);
    if (!page.is_valid()) {
        throw TemplateError(page.error_message());
    }
    std::string filled;
    page.render(DataOf(data), [&filled](const std::string& piece) { filled += piece; });
    if (!page.is_valid()) {
        throw TemplateError(page.error_message());
    }
    return filled;
}

} // namespace zonstory

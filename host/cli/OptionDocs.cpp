#include "cli/OptionDocs.h"

#include <algorithm>

#include <CLI/App.hpp>
#include <fmt/ranges.h>

namespace zonstory {

namespace {

// The tree keeps a set of words as ":{text,json,csv}" behind the kind of value.
std::vector<std::string> Choices(const std::string& kind) {
    const std::size_t open = kind.find(":{");
    return open == std::string::npos ? std::vector<std::string>()
                                     : CLI::detail::split(kind.substr(open + 2, kind.find('}') - open - 2), ',');
}

std::string ValueOf(const std::string& kind, const std::vector<std::string>& choices) {
    return choices.empty() ? kind.substr(0, kind.find(':')) : fmt::format("{}", fmt::join(choices, "|"));
}

} // namespace

OptionDoc DescribeOption(const CLI::Option& option) {
    OptionDoc doc;
    const std::string kind = option.get_type_size() == 0 ? "" : option.get_type_name();
    doc.choices = Choices(kind);
    doc.value = ValueOf(kind, doc.choices);
    doc.description = option.get_description();
    doc.isArgument = option.get_positional();
    doc.isRequired = option.get_required();
    doc.isMany = option.get_expected_max() > 1;
    doc.shortName = option.get_snames().empty() ? "" : "-" + option.get_snames().front();
    doc.longName = doc.isArgument ? option.get_name(true) : "--" + option.get_lnames().front();
    return doc;
}

std::vector<OptionDoc> DescribeOptions(const CLI::App& app) {
    std::vector<OptionDoc> docs;
    for (const CLI::Option* option : app.get_options()) {
        docs.push_back(DescribeOption(*option));
    }
    std::stable_partition(docs.begin(), docs.end(), [](const OptionDoc& doc) { return doc.isArgument; });
    return docs;
}

std::string Synopsis(const CLI::App& app) {
    std::string text;
    for (const OptionDoc& doc : DescribeOptions(app)) {
        if (doc.isArgument) {
            const std::string name = doc.longName + (doc.isMany ? "..." : "");
            text += (doc.isRequired ? name : '[' + name + ']') + ' ';
        }
    }
    return text + "[OPTIONS]";
}

} // namespace zonstory

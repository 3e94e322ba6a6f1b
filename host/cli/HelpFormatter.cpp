#include "cli/HelpFormatter.h"

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "cli/OptionDocs.h"
#include "cli/Verb.h"

namespace zonstory {

namespace {

constexpr std::size_t kLineLength = 100;

const Verb* FindVerb(const std::string& name) {
    for (const Verb& verb : Verbs()) {
        if (name == verb.name) {
            return &verb;
        }
    }
    return nullptr;
}

// Breaks a paragraph at blanks; the lines after the first are indented.
std::string Wrapped(const std::string& paragraph, std::size_t indent) {
    std::string text;
    std::size_t column = indent;
    for (const std::string& word : CLI::detail::split(paragraph, ' ')) {
        if (column > indent && column + 1 + word.size() > kLineLength) {
            text += '\n' + std::string(indent, ' ');
            column = indent;
        }
        text += (column > indent ? " " : "") + word;
        column += (column > indent ? 1 : 0) + word.size();
    }
    return text;
}

} // namespace

std::string HelpFormatter::make_description(const CLI::App* app) const {
    const Verb* const verb = FindVerb(app->get_name());
    return verb == nullptr ? app->get_description() + "\n\n"
                           : fmt::format("{}.\n\n{}\n\n", verb->summary, Wrapped(verb->details, 0));
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    if (app->get_parent() == nullptr) {
        return fmt::format("Usage: {} VERB ... [OPTIONS]\n       {} VERB --help\n", name, name);
    }
    return "Usage: " + name + ' ' + Synopsis(*app) + '\n';
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    const Verb* const verb = FindVerb(command->get_name());
    return fmt::format("  {:<12}{}\n  {:<12}$ {}\n", command->get_name(), verb->summary, "", verb->example);
}

std::string HelpFormatter::make_footer(const CLI::App* app) const {
    return app->get_footer();
}

// What is required stands in the usage line.
std::string HelpFormatter::make_option(const CLI::Option* option, bool) const {
    const OptionDoc doc = DescribeOption(*option);
    const std::string name =
        (doc.shortName.empty() ? "" : doc.shortName + ", ") + doc.longName + (doc.value.empty() ? "" : ' ' + doc.value);
    const std::size_t column = get_column_width();
    const std::string gap =
        name.size() + 4 > column ? '\n' + std::string(column, ' ') : std::string(column - 2 - name.size(), ' ');
    return "  " + name + gap + Wrapped(doc.description, column) + '\n';
}

} // namespace zonstory

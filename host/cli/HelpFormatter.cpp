#include "cli/HelpFormatter.h"

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "cli/Verb.h"

namespace zonstory {

namespace {

const Verb* FindVerb(const std::string& name) {
    for (const Verb& verb : Verbs()) {
        if (name == verb.name) {
            return &verb;
        }
    }
    return nullptr;
}

} // namespace

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    if (app->get_parent() == nullptr) {
        return fmt::format("Usage: {} VERB [OPTIONS] ...\n       {} VERB --help\n", name, name);
    }
    std::string usage = "Usage: " + name;
    for (const CLI::Option* option : app->get_options([](const CLI::Option* o) { return o->get_positional(); })) {
        const bool isMany = option->get_expected_max() > 1;
        const std::string text = option->get_name(true) + (isMany ? "..." : "");
        usage += option->get_required() ? ' ' + text : " [" + text + ']';
    }
    return usage + " [OPTIONS]\n";
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    const Verb* const verb = FindVerb(command->get_name());
    return fmt::format("  {:<12}{}\n  {:<12}$ {}\n", command->get_name(), verb->summary, "", verb->example);
}

// The kind of value alone, "FILE" or "{text,json,csv}"; what is required stands in the usage line.
std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    const std::string kind = option->get_type_size() == 0 ? "" : option->get_type_name();
    const std::size_t colon = kind.find(':');
    const std::string name = kind.substr(0, colon);
    const bool hasChoices = colon != std::string::npos && kind.compare(colon, 2, ":{") == 0;
    const std::string shown = hasChoices ? kind.substr(colon + 1) : name;
    return shown.empty() ? "" : ' ' + shown;
}

} // namespace zonstory

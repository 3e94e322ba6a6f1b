#include "cli/Configuration.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <utility>
#include <vector>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <fmt/format.h>

#include "files/FileError.h"
#include "files/ReadFile.h"

namespace zonstory {

namespace {

struct Line {
    std::string where; ///< "file:12", or the name of a variable of the environment.
    CLI::ConfigItem item;
};

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

struct EnvironmentVariable {
    const char* name;
    const char* option;
};

constexpr EnvironmentVariable kVariables[] = {{"ZONSTORY_PLACE", "place"}};

std::vector<Line> ReadEnvironment() {
    std::vector<Line> lines;
    for (const EnvironmentVariable& variable : kVariables) {
        if (std::string value = Variable(variable.name); !value.empty()) {
            lines.push_back({variable.name, {{}, variable.option, {std::move(value)}}});
        }
    }
    return lines;
}

// The option library reads a file as a whole and does not say where in it things stand; so it gets it line by line, each
// below the line of its section.
std::vector<Line> ReadLines(const std::string& file) {
    std::istringstream stream(ReadFile(file));
    std::vector<Line> lines;
    std::string section;
    std::string text;
    for (std::size_t number = 1; std::getline(stream, text); ++number) {
        const std::string trimmed = CLI::detail::trim_copy(text);
        if (trimmed.starts_with('[')) {
            section = trimmed;
            continue;
        }
        std::istringstream one(fmt::format("{}\n{}", section, text));
        for (CLI::ConfigItem& item : CLI::ConfigTOML().from_config(one)) {
            if (item.name != "++" && item.name != "--") { // a section's begin and end
                lines.push_back({fmt::format("{}:{}", file, number), std::move(item)});
            }
        }
    }
    return lines;
}

// Those that a file may give, of a verb or of all.
std::vector<CLI::Option*> OptionsFor(CLI::App& program, const CLI::ConfigItem& item) {
    std::vector<CLI::Option*> options;
    for (CLI::App* const verb : program.get_subcommands({})) {
        const bool isMeant =
            item.parents.empty() || (item.parents.size() == 1 && item.parents.front() == verb->get_name());
        CLI::Option* const option = isMeant ? verb->get_option_no_throw("--" + item.name) : nullptr;
        if (option != nullptr && option->get_configurable()) {
            options.push_back(option);
        }
    }
    return options;
}

void Apply(CLI::App& program, const Line& line) {
    const std::vector<CLI::Option*> options = OptionsFor(program, line.item);
    if (options.empty()) {
        throw ConfigurationError(
            fmt::format("{}: '{}' is nothing that can be set here", line.where, line.item.fullname()));
    }
    for (CLI::Option* const option : options) {
        if (option->count() > 0) {
            continue;
        }
        try {
            option->add_result(line.item.inputs);
            option->run_callback();
        } catch (const CLI::ParseError& error) {
            throw ConfigurationError(fmt::format("{}: {}", line.where, error.what()));
        }
    }
}

// What is said of one verb comes before what is said of all: the first to give an option counts.
std::vector<Line> ReadConfiguration(const std::string& file) {
    try {
        std::vector<Line> lines = ReadLines(file);
        std::stable_partition(lines.begin(), lines.end(), [](const Line& line) { return !line.item.parents.empty(); });
        return lines;
    } catch (const FileError& error) {
        throw ConfigurationError(fmt::format("{}: {}", file, error.what()));
    }
}

bool Exists(const std::string& file) {
    return !file.empty() && CLI::detail::check_path(file.c_str()) != CLI::detail::path_type::nonexistent;
}

} // namespace

std::string UsualConfiguration() {
    const std::string folder = Variable("XDG_CONFIG_HOME");
    const std::string home = Variable("HOME");
    if (folder.starts_with('/')) { // one that is not absolute does not count
        return folder + "/zonstory.toml";
    }
    return home.empty() ? std::string() : home + "/.config/zonstory.toml";
}

void ApplyConfiguration(CLI::App& program, const std::string& given) {
    const std::string file = given.empty() ? UsualConfiguration() : given;
    std::vector<Line> lines = ReadEnvironment();
    if (!given.empty() || Exists(file)) {
        const std::vector<Line> more = ReadConfiguration(file);
        lines.insert(lines.end(), more.begin(), more.end());
    }
    for (const Line& line : lines) {
        Apply(program, line);
    }
}

} // namespace zonstory

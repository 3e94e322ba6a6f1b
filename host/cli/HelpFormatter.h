#pragma once

#include <string>

#include <CLI/Formatter.hpp>

namespace zonstory {

/// Prints help: all verbs with an example each, or one verb whole.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_description(const CLI::App* app) const override;
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_footer(const CLI::App* app) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
};

} // namespace zonstory

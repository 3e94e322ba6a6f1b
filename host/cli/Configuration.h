#pragma once

#include <stdexcept>
#include <string>

namespace CLI {
class App;
}

/// Standing choices: options that the environment gives where the command line does not, or else a file.
namespace zonstory {

/// What is wrong with them: "file:line: reason", "file: reason", "ZONSTORY_PLACE: reason".
class ConfigurationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where the file lies unless --config says otherwise: $XDG_CONFIG_HOME/zonstory.toml, ~/.config/zonstory.toml. Empty where
/// neither is set.
std::string UsualConfiguration();

/// Gives the options of a tree that has been parsed what the environment says, and what the file says: a line
/// "place = sidecar" for every verb that has the option, below a line "[write]" for that one. What was given before stays.
/// @param given  As the user named it, which has to exist; empty for the usual one, which need not.
/// @throws ConfigurationError
void ApplyConfiguration(CLI::App& program, const std::string& given);

} // namespace zonstory

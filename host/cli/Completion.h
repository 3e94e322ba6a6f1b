#pragma once

#include <string>

namespace CLI {
class App;
}

namespace zonstory {

/// @name Completion scripts of an option tree
/// @{
std::string BashCompletion(const CLI::App& program);
std::string ZshCompletion(const CLI::App& program);
std::string FishCompletion(const CLI::App& program);
/// @}

} // namespace zonstory

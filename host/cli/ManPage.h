#pragma once

#include <string>

namespace CLI {
class App;
}

namespace zonstory {

/// The man page zonstory(1) of an option tree, as roff.
std::string ManPage(const CLI::App& program);

} // namespace zonstory

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "output/ExitCode.h"

namespace CLI {
class App;
}

namespace zonstory {

class Output;

/// What a command line asks for, filled while it is parsed.
struct Invocation {
    bool isQuiet = false;
    bool isWithoutColor = false;
    std::string configuration;       ///< A file; empty for the usual one.
    std::function<int(Output&)> run; ///< Set by the verb; returns an ExitCode.
};

/// The whole command line: every verb with its options, help and examples. Help, man page and completions are all made
/// from it.
/// @param invocation  Filled when the tree parses; must live as long as the tree.
std::unique_ptr<CLI::App> MakeOptionTree(Invocation& invocation);

struct ExitCodeMeaning {
    ExitCode code;
    const char* meaning;
};

/// What the program's exit codes mean, for help and man page.
const std::vector<ExitCodeMeaning>& ExitCodeMeanings();

} // namespace zonstory

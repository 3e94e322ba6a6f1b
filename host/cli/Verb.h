#pragma once

#include <functional>
#include <vector>

namespace CLI {
class App;
}

namespace zonstory {

class Output;

using Action = std::function<int(Output&)>;

/// One verb of the program: a row of Verbs().
struct Verb {
    const char* name;
    const char* summary; ///< One line.
    const char* example; ///< One command line.
    const char* details; ///< What `zonstory VERB --help` says below the summary.
    Action (*addOptions)(
        CLI::App& command); ///< Declares the verb's options; what it returns runs once they are parsed.
};

/// All verbs, in the order in which the help shows them.
const std::vector<Verb>& Verbs();

} // namespace zonstory

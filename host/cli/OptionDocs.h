#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace zonstory {

/// One option or argument, as help, man page and completions need it.
struct OptionDoc {
    std::string shortName; ///< "-r", or empty.
    std::string longName;  ///< "--recursive", or the name of an argument: "CLIP".
    std::string value;     ///< What it takes: "FILE", "text|json|csv", or empty for a flag.
    std::vector<std::string> choices;
    std::string description;
    bool isArgument = false;
    bool isRequired = false;
    bool isMany = false;
};

OptionDoc DescribeOption(const CLI::Option& option);

/// Of the program, or of one verb: arguments first, then options, in the order of their declaration.
std::vector<OptionDoc> DescribeOptions(const CLI::App& app);

/// "STORY [CLIP...] [OPTIONS]"
std::string Synopsis(const CLI::App& app);

} // namespace zonstory

#pragma once

#include <stdexcept>

namespace zonstory {

/// A command line, or a file it names, that makes no sense; ends the program with the exit code for usage.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace zonstory

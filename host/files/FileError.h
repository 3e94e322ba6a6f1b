#pragma once

#include <stdexcept>

namespace zonstory {

/// Why work on a file ended, in one line without the file's name, to be said behind it: "cannot be read: Input/output
/// error". What is true of the file then is said where it is thrown.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace zonstory

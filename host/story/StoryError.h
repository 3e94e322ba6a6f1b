#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zonstory {

/// A place in a file; both count from 1. 0 where there is none: the file could not be opened or read.
struct SourcePosition {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// Why a story could not be read. what() is the whole line, "file:line:column: message", or "file: message"
/// where no place is known. The file's name is as the caller gave it and may hold any byte: it is made
/// harmless when printed.
class StoryError : public std::runtime_error {
public:
    StoryError(const std::string& file, SourcePosition position, const std::string& message);

    SourcePosition Position() const { return mPosition; }
    const std::string& Message() const { return mMessage; }

private:
    SourcePosition mPosition;
    std::string mMessage;
};

} // namespace zonstory

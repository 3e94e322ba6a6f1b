#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include <zonscreenplay/Export.h>

namespace zonscreenplay {

/// A place in a file; both count from 1. 0 where there is none: the file could not be opened or read.
struct Position {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// Why a screenplay could not be read. what() is the whole line, "file:line:column: message", or "file: message" where no
/// place is known. The file's name is as the caller gave it and may hold any byte; the message is UTF-8.
class ZONSCREENPLAY_API ReadError : public std::runtime_error {
public:
    ReadError(const std::string& file, Position position, const std::string& message);
    ReadError(const ReadError&);
    ReadError& operator=(const ReadError&);
    ~ReadError() override;

    Position Where() const { return mPosition; }
    const std::string& Message() const { return mMessage; }

private:
    Position mPosition;
    std::string mMessage;
};

} // namespace zonscreenplay

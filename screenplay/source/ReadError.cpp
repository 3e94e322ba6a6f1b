#include <zonscreenplay/ReadError.h>

namespace zonscreenplay {

namespace {

std::string WholeLine(const std::string& file, Position position, const std::string& message) {
    if (position.line == 0) {
        return file + ": " + message;
    }
    return file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column) + ": " + message;
}

} // namespace

ReadError::ReadError(const std::string& file, Position position, const std::string& message)
    : std::runtime_error(WholeLine(file, position, message)), mPosition(position), mMessage(message) {}

ReadError::ReadError(const ReadError&) = default;
ReadError& ReadError::operator=(const ReadError&) = default;
ReadError::~ReadError() = default;

} // namespace zonscreenplay

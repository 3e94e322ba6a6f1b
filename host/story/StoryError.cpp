#include "story/StoryError.h"

namespace zonstory {

namespace {

std::string WholeLine(const std::string& file, SourcePosition position, const std::string& message) {
    if (position.line == 0) {
        return file + ": " + message;
    }
    return file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column) + ": " + message;
}

} // namespace

StoryError::StoryError(const std::string& file, SourcePosition position, const std::string& message)
    : std::runtime_error(WholeLine(file, position, message)), mPosition(position), mMessage(message) {}

} // namespace zonstory

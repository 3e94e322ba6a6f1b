#include "clip/SystemError.h"

#include <system_error>

#include "clip/Clip.h"

namespace zonstory {

void ThrowSystemError(const std::string& attempt, int error) {
    throw ClipError(attempt + ": " + SystemErrorText(error));
}

std::string SystemErrorText(int error) {
    return std::generic_category().message(error);
}

} // namespace zonstory

#include "files/SystemError.h"

#include <system_error>

#include "files/FileError.h"

namespace zonstory {

void ThrowSystemError(const std::string& attempt, int error) {
    throw FileError(attempt + ": " + SystemErrorText(error));
}

std::string SystemErrorText(int error) {
    return std::generic_category().message(error);
}

} // namespace zonstory

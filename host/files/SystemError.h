#pragma once

#include <cerrno>
#include <string>

namespace zonstory {

/// Throws what a system call failed with.
/// @param attempt  What was tried, as "cannot copy it".
/// @param error    The system's number, errno unless given.
/// @throws FileError "cannot copy it: No space left on device".
[[noreturn]] void ThrowSystemError(const std::string& attempt, int error = errno);

/// The system's own words for an error.
std::string SystemErrorText(int error = errno);

} // namespace zonstory

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "files/FileDescriptor.h"

namespace zonstory {

/// Writes all bytes at a file's own position, which moves on.
/// @throws FileError "cannot be written: No space left on device", as the next.
void WriteAll(const FileDescriptor& to, std::string_view bytes);

/// Writes all bytes at a place.
void WriteAllAt(const FileDescriptor& to, std::string_view bytes, std::uint64_t offset);

} // namespace zonstory

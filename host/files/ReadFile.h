#pragma once

#include <string>

#include "files/FileDescriptor.h"

/// Files read from front to end: of any kind, pipes among them. Errors are the system's words alone, to be said behind
/// the file's name.
namespace zonstory {

/// @param path  A file's name, or "-" for standard input.
/// @throws FileError
FileDescriptor OpenToRead(const std::string& path);

/// What is left of a file.
/// @throws FileError
std::string ReadAll(const FileDescriptor& file);

/// @param path  As in OpenToRead().
/// @throws FileError
std::string ReadFile(const std::string& path);

} // namespace zonstory

#pragma once

#include <filesystem>
#include <stdexcept>
#include <string_view>

namespace zonstory {

/// Why a file of results could not be written: "name: reason".
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes a file that is there whole or not at all: beside it first, then in its place. A file that exists is replaced
/// and its permissions are kept; what a symbolic link leads to is replaced, not the link; a device or pipe is written to
/// as it is.
/// @throws OutputError; the file under this name is then as it was.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

} // namespace zonstory

#pragma once

#include <array>
#include <optional>
#include <string>

namespace zonscreenplay {

/// The code point of each byte of a one-byte encoding; -1 for a byte that means nothing.
using SingleByteTable = std::array<int, 256>;

/// The table of an encoding such as windows-1252, koi8-r or iso-8859-5.
/// @param name  As an XML declaration gives it, ASCII.
/// @return Nothing for an encoding that the system does not know, or that takes several bytes for a
/// character.
std::optional<SingleByteTable> FindSingleByteEncoding(const std::string& name);

} // namespace zonscreenplay

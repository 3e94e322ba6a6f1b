#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/ByteReader.h"

namespace zonstory {

/// What a file is that no writer is for, told by its name alone: "is camera raw, which stays as the camera made it". Nothing
/// for other names.
std::optional<std::string> UnwrittenByExtension(std::string_view extension);

/// The same, told by its first bytes; of any file, so that the last answer is that nothing is known.
std::string UnwrittenByBytes(const ByteReader& file);

} // namespace zonstory

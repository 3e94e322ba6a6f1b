#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zonstory {

std::string ToBase64(std::string_view bytes);

/// Nothing for a text that is none.
std::optional<std::string> FromBase64(std::string_view text);

} // namespace zonstory

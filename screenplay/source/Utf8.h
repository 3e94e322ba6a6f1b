#pragma once

#include <string_view>

#include <zoncore/UString.h>

namespace zonscreenplay {

/// Appends UTF-8 to a UTF-16 text; a malformed sequence becomes U+FFFD. Nothing is allocated when there is room.
void AppendUTF8(std::string_view utf8, zoncore::UString& text);

} // namespace zonscreenplay

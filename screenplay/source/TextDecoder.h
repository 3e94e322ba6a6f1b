#pragma once

#include <string>
#include <string_view>

#include "source/ScriptBuilder.h"

namespace zonscreenplay {

/// The text of a file without markup, as well-formed UTF-8 without a byte order mark: UTF-8 with or without one, UTF-16
/// with one, of which a cut surrogate is U+FFFD; anything else is read as Windows-1252, and the builder is told so.
std::string DecodeText(std::string_view bytes, ScriptBuilder& builder);

} // namespace zonscreenplay

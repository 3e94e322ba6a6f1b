#pragma once

#include <string_view>

#include "source/ScriptBuilder.h"

namespace zonscreenplay {

/// Reads Fountain into a builder.
/// @param text  UTF-8, well-formed, without a byte order mark; line ends as in the file: LF, CRLF or CR.
/// @param options  strictFountain is looked at.
/// @throws ReadError beyond a limit, or when the text has neither a heading nor a cue.
void ReadFountain(std::string_view text, const ReadOptions& options, ScriptBuilder& builder);

} // namespace zonscreenplay

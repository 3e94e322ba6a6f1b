#pragma once

#include <string>

#include "source/ScriptBuilder.h"

namespace zonscreenplay {

/// Reads Fountain into a builder; docs/screenplays.md says what becomes of what. Linear in the text, whatever it holds.
/// @param text     UTF-8, well-formed, without a byte order mark; line ends as in the file: LF, CRLF or CR.
/// @param options  strictFountain and the limits are looked at.
/// @throws ReadError beyond a limit, or when the text has neither a heading nor a cue.
void ReadFountain(std::string text, const ReadOptions& options, ScriptBuilder& builder);

} // namespace zonscreenplay

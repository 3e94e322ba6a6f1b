#pragma once

#include <string>
#include <string_view>

/// Text of unknown origin, made fit for a place that would otherwise act on it. File names and stories come from others:
/// they may hold line feeds, terminal commands, characters that turn the reading direction, or bytes that are no UTF-8.
namespace zonstory {

/// One line that no terminal acts on: control characters, line separators and direction overrides become "\n", "\x1b" or
/// "\u202e", and each byte that is no UTF-8 becomes "\xe9". Everything else stays.
std::string SafeLine(std::string_view text);

/// As SafeLine, but line feeds and tabs stay: for whole documents on their way to a terminal.
std::string SafeLines(std::string_view text);

/// For a page of markup, whose elements each end what a direction override begins: as SafeLines, but those stay, which
/// scripts from right to left may need.
std::string SafePage(std::string_view text);

/// Valid UTF-8: each byte that is none becomes "\xe9". Everything else stays, control characters too.
std::string ValidUTF8(std::string_view bytes);

} // namespace zonstory

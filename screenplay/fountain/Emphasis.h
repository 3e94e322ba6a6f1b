#pragma once

#include <string>
#include <string_view>

/// Emphasis and escapes within one line, by the rules of Markdown: `*slanted*`, `**bold**`, `_underlined_`.
///
/// A mark opens in front of a character and closes behind one, never next to a blank only; `_` counts at the edges of
/// words alone, so that a_file_name stays whole; what opens and never closes is text. Linear in the line, whatever it
/// holds.
namespace zonscreenplay::fountain {

/// Appends the line without the marks of its emphasis and without the backslashes that protect a character.
void AppendPlainText(std::string_view line, std::string& plain);

/// The line without its emphasis, every escape as it was.
std::string WithoutEmphasis(std::string_view line);

/// Whether the character at `position` is protected by a backslash.
bool IsEscaped(std::string_view line, std::size_t position);

} // namespace zonscreenplay::fountain

#pragma once

#include <string>
#include <string_view>

/// Lines of Fountain that read as what they are meant to be. Each is the plainest of several ways to write it that the
/// reader's own functions understand rightly, so the two cannot drift apart.
///
/// Texts are UTF-8 without line ends and without blanks at their ends, and not empty save where said otherwise; each line
/// but those of a speech's text comes after an empty one.
namespace zonscreenplay::fountain {

/// With a backslash wherever the text would be taken as emphasis, an escape, a note or a boneyard.
std::string Escaped(std::string_view text);

/// @param text  May be empty, as may the number.
std::string HeadingLine(std::string_view text, std::string_view number);

/// @param isFollowed  Something is said: the next line is not empty.
/// @param isTop       Nothing stands before it that would keep it from being read as a title page.
std::string CueLine(std::string_view text, bool isDual, bool isFollowed, bool isTop);

std::string TransitionLine(std::string_view text, bool isTop);

/// In brackets, where it does not come in them.
std::string ParentheticalLine(std::string_view text);

std::string DialogueLine(std::string_view text);

/// @param text       With the blanks in front of it; may be empty.
/// @param isFirst    Of its paragraph.
/// @param next       The paragraph's next line; empty at the end.
std::string ActionLine(std::string_view text, bool isFirst, std::string_view next, bool isTop);

} // namespace zonscreenplay::fountain

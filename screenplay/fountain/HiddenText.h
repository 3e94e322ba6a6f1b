#pragma once

#include <string>
#include <string_view>

#include "source/ScriptBuilder.h"

/// What stands in a text and is no part of the script: boneyards, `/* ... */`, and notes, `[[ ... ]]`.
///
/// Where one was taken out, marks are left behind: bytes that no UTF-8 holds, so that they cannot be mistaken. Of them
/// the reader of lines tells why a line is empty, and on which line of the file it stands.
namespace zonscreenplay::fountain {

constexpr char kBoneyardMark = '\xFD';
constexpr char kNoteMark = '\xFE';
constexpr char kLineEndMark = '\xFF'; ///< One for each line end that was taken out.
constexpr std::string_view kHiddenMarks = "\xFD\xFE\xFF";

/// Takes the boneyards out. One may stand within another; from the first that is not closed in this way on, each ends
/// where one first ends. What begins and never ends stays text.
/// @param text     Well-formed UTF-8, LF alone ends a line.
/// @param builder  Is warned of those that are not closed, and of one within another.
void TakeOutBoneyards(std::string& text, ScriptBuilder& builder);

/// Takes the notes out of a text without boneyards, and hands them to the builder. A note ends within its paragraph: an
/// empty line, of less than two blanks, leaves it open, and it stays text.
void TakeOutNotes(std::string& text, ScriptBuilder& builder);

} // namespace zonscreenplay::fountain

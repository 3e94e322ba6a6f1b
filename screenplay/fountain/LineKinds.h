#pragma once

#include <string>
#include <string_view>

/// What a line says of itself; what stands around it is the parser's to look at. Lines come without the blanks at their
/// ends, save where said otherwise, with their emphasis and escapes.
namespace zonscreenplay::fountain {

/// INT, EXT, EST, INT/EXT, I/E and their turns, in any case, with a dot or a blank behind.
bool IsHeading(std::string_view line);
/// One dot before a letter or a digit, or anything beyond ASCII. A heading that begins with another character has it
/// escaped, and one that says nothing is its number alone: ".#12#", or ".##" without.
bool IsForcedHeading(std::string_view line);
/// In capitals, and beginning with a setting that the story's library knows: "INN. STUBE - TAG".
bool IsHeadingOfKnownSetting(std::string_view line);
/// In capitals as well.
bool IsHeadingInCapitals(std::string_view line);

/// In capitals and ending in TO: with no blank behind it.
/// @param line  With the blanks at its end.
bool IsTransition(std::string_view line);
bool IsCentred(std::string_view line);
bool IsPageBreak(std::string_view line);
/// No small letter outside brackets, and a capital.
bool IsCue(std::string_view line);
/// One pair of brackets around all of it.
bool IsParenthetical(std::string_view line);

struct NumberedHeading {
    std::string_view text;
    std::string number; ///< Empty without one.
};

/// @param heading  Without the dot that forces it.
NumberedHeading SplitNumber(std::string_view heading);

struct Cue {
    std::string text;    ///< With its extension.
    bool isDual = false; ///< Spoken together with the speech before.
};

/// @param cue  Without the sign that forces it.
Cue ReadCue(std::string_view cue);

} // namespace zonscreenplay::fountain

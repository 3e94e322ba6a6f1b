#pragma once

#include <cstdint>
#include <string_view>

/// Characters as Fountain tells them apart. Texts are UTF-8; what is malformed in them is a character of no kind.
namespace zonscreenplay::fountain {

/// Takes the first character off a text that is not empty.
std::int32_t TakeCharacter(std::string_view& text);
/// The last one, which stays.
std::int32_t LastCharacter(std::string_view text);

bool IsLetterOrDigit(std::int32_t character);
bool IsCapital(std::int32_t character);
/// "ß" is none: names in capitals keep it.
bool IsSmall(std::int32_t character);
bool IsSpace(std::int32_t character);
/// Punctuation and symbols.
bool IsPunctuation(std::int32_t character);

/// What a backslash in front of it makes an ordinary character.
bool IsEscapable(char byte);

/// Space, tab, no-break space and the ideographic space.
std::string_view WithoutLeadingBlanks(std::string_view text);
std::string_view WithoutTrailingBlanks(std::string_view text);
std::string_view WithoutBlanks(std::string_view text);

} // namespace zonscreenplay::fountain

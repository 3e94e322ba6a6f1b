#pragma once

#include <cstddef>
#include <string>

#include <zoncore/Export.h>

namespace zoncore {

/// A string of UTF-16 code units. It may hold unpaired surrogates; nothing checks it before it is converted.
using UString = std::u16string;

/// A string of bytes that is meant to hold UTF-8.
using UTF8String = std::string;

/// Widens `length` ASCII characters, one code unit each. `ascii` may be null when `length` is 0.
ZONCORE_API UString AsciiToUTF16(const char* ascii, std::size_t length);

/// Converts UTF-8 to UTF-16. Never fails: each malformed sequence (a lead byte with the trail bytes that do follow it,
/// or a stray trail byte) becomes one U+FFFD, and the first byte that does not belong to it is read anew, so that no
/// character after a damaged one is lost.
ZONCORE_API UString UTF8to16(const UTF8String& utf8);

/// Converts UTF-16 to UTF-8. Never fails: each unpaired surrogate becomes U+FFFD. U+0000 is kept as a zero byte.
ZONCORE_API UTF8String UTF16to8(const UString& utf16);

} // namespace zoncore

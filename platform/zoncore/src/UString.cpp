#include <zoncore/UString.h>

#include <algorithm>
#include <iterator>

#include <boost/nowide/utf/utf.hpp>

#include <zoncore/ASCII.h>

namespace zoncore {

namespace {

namespace utf = boost::nowide::utf;

constexpr utf::code_point kReplacementCharacter = 0xFFFD;

// The end of the malformed sequence that starts at `first`: a lead unit takes along the trail units that do follow it.
template <typename Unit>
const Unit* EndOfMalformedSequence(const Unit* first, const Unit* last) {
    int trailUnits = utf::utf_traits<Unit>::trail_length(*first);
    const Unit* end = std::next(first);
    while (trailUnits-- > 0 && end != last && utf::utf_traits<Unit>::is_trail(*end)) {
        ++end;
    }
    return end;
}

// Boost's own conversion of a whole string also takes the unit that broke a sequence, and so loses a good character.
template <typename To, typename From>
std::basic_string<To> Convert(const std::basic_string<From>& source) {
    std::basic_string<To> result;
    result.reserve(source.size());
    const From* position = source.data();
    const From* const last = position + source.size();
    while (position != last) {
        const From* const ascii = position; // most of every script: the same unit in both encodings
        position = EndOfASCII(ascii, last);
        const std::size_t done = result.size();
        result.resize(done + static_cast<std::size_t>(position - ascii));
        std::copy(ascii, position, &result[done]);
        if (position == last) {
            break;
        }
        const From* const first = position;
        utf::code_point codePoint = utf::utf_traits<From>::decode(position, last);
        if (codePoint == utf::illegal || codePoint == utf::incomplete) {
            codePoint = kReplacementCharacter;
            position = EndOfMalformedSequence(first, last);
        }
        utf::utf_traits<To>::encode(codePoint, std::back_inserter(result));
    }
    return result;
}

} // namespace

UString AsciiToUTF16(const char* ascii, std::size_t length) {
    return UString(ascii, ascii + length);
}

UString UTF8to16(const UTF8String& utf8) {
    return Convert<char16_t>(utf8);
}

UTF8String UTF16to8(const UString& utf16) {
    return Convert<char>(utf16);
}

} // namespace zoncore

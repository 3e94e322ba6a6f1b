#pragma once

#include <cstddef>

#include <zoncore/Export.h>
#include <zoncore/UString.h>

namespace zoncore {

/// Cuts a text into pieces at delimiters, one piece a call. Holds copies of both texts.
///
///     Tokenizer pieces(u"1:30", u":", 0, false);
///     pieces.NextToken();      // u"1"
///     pieces.NextToken();      // u"30"
///     pieces.HasMoreTokens();  // false
class ZONCORE_API Tokenizer {
public:
    /// @param delimiters              Every code unit of it ends a token.
    /// @param position                Index of the first code unit to look at; at or past the end, no token is left.
    /// @param skipRepeatedDelimiters  Whether delimiters equal to the one that ended a token, and directly following
    ///                                it, are passed over with it. Otherwise each gives an empty token.
    Tokenizer(const UString& text, const UString& delimiters, std::size_t position, bool skipRepeatedDelimiters);

    bool HasMoreTokens() const;

    /// The text up to the next delimiter or the end; empty when no token is left. A delimiter that ends the whole text
    /// is followed by no further token.
    UString NextToken();

    /// The text from the current position to the end, delimiters included; empty when no token is left. The position
    /// stays where it is.
    UString GetRemaining();

private:
    ZONCORE_LOCAL void MoveTo(std::size_t position);

    UString mText;
    UString mDelimiters;
    std::size_t mPosition; // UString::npos once no token is left
    bool mSkipRepeatedDelimiters;
};

} // namespace zoncore

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "match/SceneNumbers.h"
#include "match/SlateWords.h"

namespace zonstory {

/// A number of a name with what is glued to it, and what a word says of it.
struct NamedNumber {
    SlateWord word = SlateWord::Unknown; ///< Its own word, as "Take" of "Take 3"; Unknown where none says what it is.
    std::string prefix;                  ///< A of A12.
    std::string digits;                  ///< Without zeros in front; "2.28" where the story numbers so.
    std::string letters;                 ///< A of 12A, or of "12 A 3".
    std::string apart;                   ///< A lone letter in front, "A 12": a camera, or a part of the number.
    std::string unread;                  ///< AFS of 5AFS: a remark was cut off, and may be a set-up.
    std::uint32_t value = 0;
    std::uint32_t place = 0; ///< The run of the name that it comes from.
    char separator = '\0';   ///< The sign in front; 0 where it is glued to the number before or begins the name.
    bool padded = false;     ///< Has zeros in front.
    bool wide = false;       ///< Has more digits than takes have.
    bool counter = false;    ///< Too long, too padded or in brackets: neither scene nor take.
    bool counted = false;    ///< A word that nobody knows stands right in front.
    bool joined = false;     ///< Named together with the number before: 12+13.
    bool lettersApart = false;

    /// As SceneNumbers takes it.
    std::string Scene() const { return prefix + digits + letters; }
    bool IsTake() const {
        return value >= 1 && value < 200 && !counter && !wide && prefix.empty() && letters != "K" && letters != "P";
    }
};

/// A name cut once into all that a reading of it needs.
struct NamePieces {
    std::vector<NamedNumber> numbers;
    std::string shape;         ///< Names of one shape are read alike; words that nobody knows are in it.
    std::string wordlessShape; ///< The same without those.
    bool unknownWords = false;
    bool against = false; ///< A word for files that show no scene.
    bool remarks = false; ///< Words that go with a slate stand behind its number.
    bool noise = false;   ///< A date or a camera's name in front of the numbers.

    bool Has(SlateWord word) const;
};

/// Takes any bytes, in linear time.
/// @param isField  A field for scene numbers, where nothing is a date or a format.
NamePieces CutName(std::string_view name, const SceneNumbers* story, bool isField = false);

} // namespace zonstory

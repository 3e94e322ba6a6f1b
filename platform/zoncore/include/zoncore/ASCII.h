#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace zoncore {

/// The first unit beyond ASCII, or `last`. Eight bytes are looked at together: nearly all of every script is ASCII.
/// @tparam Unit  char for UTF-8, char16_t for UTF-16.
template <typename Unit>
const Unit* EndOfASCII(const Unit* first, const Unit* last) {
    using Word = std::uint64_t;
    constexpr std::ptrdiff_t kUnits = sizeof(Word) / sizeof(Unit);
    constexpr Word kBeyondASCII = sizeof(Unit) == 1 ? 0x8080808080808080U : 0xFF80FF80FF80FF80U;
    static_assert(sizeof(Unit) <= 2);
    for (; last - first >= kUnits; first += kUnits) {
        Word word = 0;
        std::memcpy(&word, first, sizeof word);
        if ((word & kBeyondASCII) != 0) {
            break;
        }
    }
    while (first != last && static_cast<std::make_unsigned_t<Unit>>(*first) < 0x80) {
        ++first;
    }
    return first;
}

} // namespace zoncore

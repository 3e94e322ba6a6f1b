#pragma once

namespace zoncore {

/// Comparison that ignores the case of the ASCII letters A to Z and of nothing else.
struct CaseInsensitive {
    static constexpr bool EqualChar(char16_t left, char16_t right) { return Fold(left) == Fold(right); }

private:
    static constexpr char16_t Fold(char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    }
};

} // namespace zoncore

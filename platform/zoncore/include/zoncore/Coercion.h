#pragma once

#include <zoncore/Export.h>
#include <zoncore/UString.h>

namespace zoncore {

/// Reads a value from text.
template <typename Value>
struct Coercion;

template <>
struct ZONCORE_API Coercion<int> {
    /// Reads a decimal integer as formatted stream input does: leading white space is skipped, then an optional sign
    /// and digits are taken, and reading stops at the first other character, so "12s" is 12.
    ///
    /// @return 0 when nothing can be read, or when the number does not fit into 32 bits with sign.
    static int Result(const UString& text);
};

} // namespace zoncore

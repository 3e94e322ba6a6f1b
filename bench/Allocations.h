#pragma once

#include <cstddef>

namespace bench {

/// What this program has asked operator new for since it started.
struct Allocations {
    std::size_t calls = 0;
    std::size_t bytesInUse = 0; ///< As malloc rounds them.

    static Allocations Now();
};

} // namespace bench

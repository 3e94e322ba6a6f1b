#pragma once

#include <cstddef>
#include <functional>

namespace bench {

/// What a step asked operator new for.
struct Allocations {
    std::size_t calls = 0;
    std::ptrdiff_t bytesLeft = 0; ///< What the step has not given back at its end, as malloc rounds it.

    /// Counts during this step alone, so that what is timed does not pay for it.
    static Allocations During(const std::function<void()>& step);
};

} // namespace bench

#include "clip/CountedBytes.h"

#include <algorithm>
#include <atomic>

namespace zonstory {

namespace {

std::atomic<std::uint64_t> sCounted{0};
thread_local std::uint64_t tLeft = 0; // of this thread's clip
thread_local unsigned tPasses = 1;

void Count(std::uint64_t bytes) noexcept {
    const std::uint64_t counted = std::min(bytes, tLeft);
    tLeft -= counted;
    sCounted += counted;
}

} // namespace

CountedClip::CountedClip(std::uint64_t size, unsigned passes) noexcept {
    tLeft = size;
    tPasses = std::max(passes, 1U);
}

CountedClip::~CountedClip() {
    Count(tLeft);
}

void CountBytes(std::uint64_t bytes) noexcept {
    Count(bytes / tPasses);
}

std::uint64_t CountedBytes() noexcept {
    return sCounted;
}

} // namespace zonstory

#include "clip/Interrupt.h"

#include <atomic>

namespace zonstory {

namespace {

std::atomic<bool> sInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may not wait for a lock");

} // namespace

void RequestInterrupt() noexcept {
    sInterrupted.store(true);
}

bool IsInterrupted() noexcept {
    return sInterrupted.load();
}

void ThrowIfInterrupted() {
    if (IsInterrupted()) {
        throw ClipInterrupted();
    }
}

} // namespace zonstory

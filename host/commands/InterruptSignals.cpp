#include "commands/InterruptSignals.h"

#include <atomic>

#include "clip/Interrupt.h"

namespace zonstory {

namespace {

// A handler takes no argument of ours, so the signal's number can only be kept here.
std::atomic<int> receivedSignal = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may use it");

void HandleSignal(int number) {
    receivedSignal = number;
    RequestInterrupt();
}

} // namespace

InterruptSignals::InterruptSignals() {
    struct sigaction action = {};
    action.sa_handler = &HandleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART; // no call in the middle of a clip fails because of it
    sigaction(SIGINT, &action, &mOldInterrupt);
    sigaction(SIGTERM, &action, &mOldTerminate);
}

InterruptSignals::~InterruptSignals() {
    sigaction(SIGINT, &mOldInterrupt, nullptr);
    sigaction(SIGTERM, &mOldTerminate, nullptr);
}

int ReceivedSignal() noexcept {
    return receivedSignal;
}

} // namespace zonstory

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

// On purpose: a signal that was ignored stays so, as HUP under nohup and INT in the background of a script.
InterruptSignals::InterruptSignals() {
    struct sigaction action = {};
    action.sa_handler = &HandleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART; // no call in the middle of a clip fails because of it
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        sigaction(kSignals[index], nullptr, &mOld[index]);
        if (mOld[index].sa_handler != SIG_IGN) {
            sigaction(kSignals[index], &action, nullptr);
        }
    }
}

InterruptSignals::~InterruptSignals() {
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        sigaction(kSignals[index], &mOld[index], nullptr);
    }
}

int ReceivedSignal() noexcept {
    return receivedSignal;
}

} // namespace zonstory

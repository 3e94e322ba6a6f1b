#pragma once

#include <csignal>

namespace zonstory {

/// As long as it lives, Ctrl-C and a request to terminate stop the work on clips at its next safe step instead of
/// killing the program. One at a time.
class InterruptSignals {
public:
    InterruptSignals();
    InterruptSignals(const InterruptSignals&) = delete;
    InterruptSignals& operator=(const InterruptSignals&) = delete;
    /// Gives the signals their earlier meaning back.
    ~InterruptSignals();

private:
    struct sigaction mOldInterrupt = {};
    struct sigaction mOldTerminate = {};
};

/// The signal that asked the program to stop; 0 for none.
int ReceivedSignal() noexcept;

} // namespace zonstory

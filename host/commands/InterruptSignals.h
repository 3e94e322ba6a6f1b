#pragma once

#include <array>
#include <csignal>

namespace zonstory {

/// As long as it lives, Ctrl-C, a request to terminate or quit, a terminal that goes away and a limit of file sizes that is
/// reached stop the work on clips at its next safe step instead of killing the program. One at a time.
class InterruptSignals {
public:
    InterruptSignals();
    InterruptSignals(const InterruptSignals&) = delete;
    InterruptSignals& operator=(const InterruptSignals&) = delete;
    /// Gives the signals their earlier meaning back.
    ~InterruptSignals();

private:
    static constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXFSZ};
    std::array<struct sigaction, kSignals.size()> mOld = {};
};

/// The signal that asked the program to stop; 0 for none.
int ReceivedSignal() noexcept;

} // namespace zonstory

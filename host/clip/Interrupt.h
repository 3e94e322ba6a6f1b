#pragma once

#include "clip/Clip.h"

/// How Ctrl-C ends work on clips: the signal handler only raises a flag, and the work, which looks at it between its
/// steps, undoes what it began as after any failure. So nothing runs in the handler that could meet a half-done step, and
/// no thread goes on making files while another removes them.
namespace zonstory {

/// What the work under way ends with after an interrupt. The clip is as it was, and nothing is left beside it.
class ClipInterrupted : public ClipError {
public:
    ClipInterrupted() : ClipError("interrupted") {}
};

/// Asks all work on clips to end, for good. May be called by a signal handler.
void RequestInterrupt() noexcept;

bool IsInterrupted() noexcept;

/// @throws ClipInterrupted when an interrupt was requested.
void ThrowIfInterrupted();

} // namespace zonstory

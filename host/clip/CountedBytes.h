#pragma once

#include <cstdint>

/// How many bytes of clips are done with, counted by the work on them as it goes on, on all threads, for whoever shows it.
namespace zonstory {

/// Work on a clip, on the thread that does it. In the end the clip's whole size counts, however little of it had to be
/// copied.
class CountedClip {
public:
    /// @param passes  How many times the work goes through the clip: to copy it, to compare it.
    CountedClip(std::uint64_t size, unsigned passes) noexcept;
    CountedClip(const CountedClip&) = delete;
    CountedClip& operator=(const CountedClip&) = delete;
    ~CountedClip();
};

/// Of this thread's clip, these bytes have been gone through once more.
void CountBytes(std::uint64_t bytes) noexcept;

/// Of all clips so far.
std::uint64_t CountedBytes() noexcept;

} // namespace zonstory

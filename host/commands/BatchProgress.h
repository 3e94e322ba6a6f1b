#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zonstory {

/// How far work on many clips is.
struct BatchProgress {
    std::size_t clipsDone = 0;
    std::size_t clips = 0;
    std::uint64_t bytesDone = 0;
    std::uint64_t bytes = 0;
    std::chrono::duration<double> elapsed{0};
};

/// "12 of 200 clips, 3.4 of 120.0 GB, 210 MB/s, 9 min left". Rate and time left only once they mean something.
std::string ProgressLine(const BatchProgress& progress);

} // namespace zonstory

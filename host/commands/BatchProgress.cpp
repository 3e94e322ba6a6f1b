#include "commands/BatchProgress.h"

#include <cmath>

#include <fmt/format.h>

namespace zonstory {

namespace {

constexpr double kMega = 1e6;
constexpr double kGiga = 1e9;

std::string TimeLeft(double seconds) {
    constexpr long long kMinute = 60;
    constexpr long long kHour = 60 * kMinute;
    const long long whole = std::llround(seconds);
    if (whole < 2 * kMinute) {
        return fmt::format("{} s", whole);
    }
    return whole < 2 * kHour ? fmt::format("{} min", whole / kMinute)
                             : fmt::format("{} h {} min", whole / kHour, whole % kHour / kMinute);
}

} // namespace

std::string ProgressLine(const BatchProgress& progress) {
    constexpr std::chrono::seconds kTooSoon(2);
    std::string line = fmt::format("{} of {} clips", progress.clipsDone, progress.clips);
    const auto all = static_cast<double>(progress.bytes);
    const auto done = static_cast<double>(progress.bytesDone);
    line += all < kGiga ? fmt::format(", {:.1f} of {:.1f} MB", done / kMega, all / kMega)
                        : fmt::format(", {:.1f} of {:.1f} GB", done / kGiga, all / kGiga);
    if (done > 0 && progress.elapsed > kTooSoon) {
        const double rate = done / progress.elapsed.count();
        line += fmt::format(", {:.0f} MB/s, {} left", rate / kMega, TimeLeft((all - done) / rate));
    }
    return line;
}

} // namespace zonstory

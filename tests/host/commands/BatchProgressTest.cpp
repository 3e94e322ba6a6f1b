#include "commands/BatchProgress.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::seconds;

TEST(BatchProgress, SaysWhatMeansSomething) {
    const std::pair<zonstory::BatchProgress, const char*> cases[] = {
        {{0, 3, 0, 20'000'000, seconds(9)}, "0 of 3 clips, 0.0 of 20.0 MB"},
        {{1, 3, 5'000'000, 20'000'000, seconds(1)}, "1 of 3 clips, 5.0 of 20.0 MB"},
        {{1, 3, 5'000'000, 20'000'000, seconds(5)}, "1 of 3 clips, 5.0 of 20.0 MB, 1 MB/s, 15 s left"},
        {{2, 9, 3'000'000'000, 9'000'000'000, seconds(300)}, "2 of 9 clips, 3.0 of 9.0 GB, 10 MB/s, 10 min left"},
        {{2, 9, 1'000'000'000, 86'400'000'000, seconds(100)}, "2 of 9 clips, 1.0 of 86.4 GB, 10 MB/s, 2 h 22 min left"},
    };
    for (const auto& [progress, line] : cases) {
        EXPECT_EQ(zonstory::ProgressLine(progress), line);
    }
}

} // namespace

#include "toolkit/ToolkitRun.h"

#include <atomic>

#include <exempi/xmp.h>

#include "toolkit/ToolkitSilence.h"

namespace zonstoryparser {

namespace {

std::atomic<int> gStarts{0};

} // namespace

bool StartToolkit() {
    const ToolkitSilence silence;
    if (!xmp_init()) {
        return false;
    }
    gStarts.fetch_add(1);
    return true;
}

void EndToolkit() {
    int starts = gStarts.load();
    while (starts > 0 && !gStarts.compare_exchange_weak(starts, starts - 1)) {
    }
    if (starts > 0) {
        xmp_terminate();
    }
}

bool IsToolkitRunning() {
    return gStarts.load(std::memory_order_relaxed) > 0;
}

} // namespace zonstoryparser

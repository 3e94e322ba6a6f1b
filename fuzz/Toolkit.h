#pragma once

#include <zonstoryparser/XMPToolkit.h>

#include "Require.h"

namespace fuzz {

/// Starts the toolkit on first use; a fuzzer's process ends without warning, so nothing ends it.
inline void StartToolkit() {
    static const bool isStarted = SXMPMeta::Initialize();
    REQUIRE(isStarted);
}

} // namespace fuzz

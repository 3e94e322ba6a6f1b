#include "Target.h"

#include <cstddef>
#include <cstdint>

#include <zonstoryparser/XMPToolkit.h>

// A fuzzer's process ends without warning, so nothing ends the toolkit.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isStarted = SXMPMeta::Initialize();
    REQUIRE(isStarted);
    fuzz::TryInput({reinterpret_cast<const char*>(data), size});
    return 0;
}

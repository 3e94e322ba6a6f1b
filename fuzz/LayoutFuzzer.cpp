// Arbitrary bytes as a clip: packets are written into it and removed again, by edits of the bytes.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "Require.h"
#include "host/clip/LayoutInvariants.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        support::RequireExactEdits(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const zonstory::DamagedFile& error) {
        REQUIRE(std::string(error.what()).starts_with("is damaged: "));
    } catch (const zonstory::NoExactWay&) {
        return 0;
    } catch (const std::logic_error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        REQUIRE(false);
    }
    return 0;
}

// Arbitrary bytes as a clip: packets are written into it and removed again, by edits of the bytes.
#include <cstdio>
#include <string>

#include "Target.h"
#include "host/clip/LayoutInvariants.h"

void fuzz::TryInput(std::string_view bytes) {
    try {
        support::RequireExactEdits(std::string(bytes));
    } catch (const zonstory::DamagedFile& error) {
        REQUIRE(std::string(error.what()).starts_with("is damaged: "));
    } catch (const zonstory::NoExactWay&) {
        return;
    } catch (const std::logic_error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        REQUIRE(false);
    }
}

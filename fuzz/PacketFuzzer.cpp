// Arbitrary bytes as an XMP packet, then every reader, writer and deleter over it, and a scene written and cleared.
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <sstream>

#include "SceneInvariants.h"
#include "Toolkit.h"
#include "support/Scenes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zonstoryparser;
    fuzz::StartToolkit();
    static const auto scene = support::MakeScene(
        {{kSceneHeading, u"INT. HOUSE - NIGHT"}, {kAction, u"Rain."}, {kCharacter, u"ANN"}, {kDialog, u"Hi."}});
    std::ostringstream printed;
    std::streambuf* const usual = std::cerr.rdbuf(printed.rdbuf());
    try {
        SXMPMeta xmp(reinterpret_cast<const char*>(data), size);
        SXMPMeta copy = xmp;
        fuzz::CheckAccessors(copy);
        fuzz::CheckScene(scene, xmp);
    } catch (const XMP_Error&) {
        // Refused at the door, or an array that is none: both reach the host by contract.
    }
    std::cerr.rdbuf(usual);
    REQUIRE(printed.str().empty());
    return 0;
}

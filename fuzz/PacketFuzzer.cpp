// Arbitrary bytes as an XMP packet, then every reader, writer and deleter over it, and a scene written and cleared.
#include <iostream>
#include <sstream>

#include "SceneInvariants.h"
#include "Target.h"
#include "support/Scenes.h"

void fuzz::TryInput(std::string_view bytes) {
    using namespace zonstoryparser;
    static const auto scene = support::MakeScene(
        {{kSceneHeading, u"INT. HOUSE - NIGHT"}, {kAction, u"Rain."}, {kCharacter, u"ANN"}, {kDialog, u"Hi."}});
    std::ostringstream printed;
    std::streambuf* const usual = std::cerr.rdbuf(printed.rdbuf());
    try {
        SXMPMeta xmp(bytes.data(), bytes.size());
        SXMPMeta copy = xmp;
        CheckAccessors(copy);
        CheckScene(scene, xmp);
    } catch (const XMP_Error&) {
        // Refused at the door, or an array that is none: both reach the host by contract.
    }
    std::cerr.rdbuf(usual);
    REQUIRE(printed.str().empty());
}

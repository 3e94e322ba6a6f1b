// Arbitrary bytes as an XMP packet, then every reader, writer and deleter over it, and a scene written and cleared.
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <sstream>

#include "SceneInvariants.h"
#include "Toolkit.h"

namespace {

boost::intrusive_ptr<zonstoryparser::Paragraph> MakeParagraph(zonstoryparser::ElementType type,
                                                              const zoncore::UString& text) {
    boost::intrusive_ptr<zonstoryparser::Paragraph> paragraph(new zonstoryparser::Paragraph);
    paragraph->objectID = zonstoryparser::ObjectID(u"p");
    paragraph->element = type;
    paragraph->textRuns.emplace_back(new zonstoryparser::TextRun);
    paragraph->textRuns[0]->text = text;
    return paragraph;
}

boost::intrusive_ptr<zonstoryparser::Scene> MakeScene() {
    boost::intrusive_ptr<zonstoryparser::Scene> scene(new zonstoryparser::Scene);
    scene->paragraphs = {MakeParagraph(zonstoryparser::kSceneHeading, u"INT. HOUSE - NIGHT"),
                         MakeParagraph(zonstoryparser::kAction, u"Rain."),
                         MakeParagraph(zonstoryparser::kCharacter, u"ANN"),
                         MakeParagraph(zonstoryparser::kDialog, u"Hi.")};
    return scene;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::StartToolkit();
    std::ostringstream printed;
    std::streambuf* const usual = std::cerr.rdbuf(printed.rdbuf());
    try {
        SXMPMeta xmp(reinterpret_cast<const char*>(data), size);
        SXMPMeta copy = xmp;
        fuzz::CheckAccessors(copy);
        fuzz::CheckScene(MakeScene(), xmp);
    } catch (const XMP_Error&) {
        // Refused at the door, or an array that is none: both reach the host by contract.
    }
    std::cerr.rdbuf(usual);
    REQUIRE(printed.str().empty());
    return 0;
}

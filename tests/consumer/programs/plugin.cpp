// A host's plugin: all that the library does, from first call to last.
#include <string>

#include <zoncore/Localizer.h>
#include <zonstoryparser/Story.h>
#include <zonstoryparser/StoryParser.h>

using namespace zonstoryparser;

namespace {

void Parse(StoryParser& parser) {
    parser.StartDocument();
    parser.StartElement(u"Talewright", {{u"version", u"1.0"}});
    parser.StartElement(u"document", {});
    parser.StartElement(u"stream", {{u"name", u"body"}});
    parser.StartElement(u"section", {});
    parser.StartElement(u"scene", {{u"sceneNumber", u"1"}});
    parser.StartElement(u"paragraph", {{u"element", u"Action"}, {u"objID", u"p"}});
    parser.StartElement(u"textRun", {});
    parser.Characters(u"Rain on the planks.");
    parser.EndElement(u"textRun");
    parser.EndDocument();
}

bool FailsAsPromised() {
    try {
        SXMPMeta refused("no packet", 9); // the toolkit prints its opinion, which must not be heard
    } catch (const XMP_Error& error) {
        return error.GetID() == kXMPErr_BadXML;
    }
    return false;
}

} // namespace

extern "C" bool StartToolkit() {
    return SXMPMeta::Initialize();
}

extern "C" void EndToolkit() {
    SXMPMeta::Terminate();
}

extern "C" bool UseLibrary() {
    zoncore::Localizer::Get().SetTranslations({{"$$$/host/Key", u"a text in another language"}});
    StoryParser parser;
    Parse(parser);
    const auto scene = parser.GetStory()->document->body->section->scenes.at(0);
    SXMPMeta clip;
    std::vector<zonmetadata::Path> changed;
    std::vector<ShotXMP> shots;
    std::string action;
    return WriteSceneMetadataIntoXMP(scene, clip, changed).empty() && GetActionFromXMP(clip, nullptr, &action) &&
           action == "Rain on the planks." && GetSceneXMP(parser.GetStory(), scene, 1, shots) && shots.size() == 1 &&
           FailsAsPromised();
}

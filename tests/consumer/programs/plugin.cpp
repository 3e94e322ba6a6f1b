// A host's plugin: it makes the library keep what it keeps, from first call to last.
#include <string>

#include <zoncore/Localizer.h>
#include <zonstoryparser/Story.h>
#include <zonstoryparser/StoryParser.h>

using namespace zonstoryparser;

extern "C" bool StartToolkit() {
    return SXMPMeta::Initialize();
}

extern "C" void EndToolkit() {
    SXMPMeta::Terminate();
}

extern "C" bool UseLibrary() {
    zoncore::Localizer::Get().SetTranslations({{"$$$/host/Key", u"a text in another language"}});
    StoryParser parser;
    parser.StartElement(u"Talewright", {{u"version", u"2.0"}});
    SXMPMeta clip;
    std::vector<zonmetadata::Path> changed;
    std::string action;
    try {
        SXMPMeta refused("no packet", 9); // the toolkit prints its opinion, which must not be heard
    } catch (const XMP_Error& error) {
        return error.GetID() == kXMPErr_BadXML && parser.HasParseError() && WriteActionToXMP(u"Rain.", clip) &&
               ClearSceneMetadataFromXMP(clip, changed).empty() && !GetActionFromXMP(clip, nullptr, &action);
    }
    return false;
}

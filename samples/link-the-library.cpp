// Builds a story of one scene, writes the scene into XMP metadata, and reads its action back.
#include <iostream>

#include <zonstoryparser/Story.h>
#include <zonstoryparser/StoryParser.h>

using namespace zonstoryparser;

void AddParagraph(StoryParser& parser, const UString& kind, const UString& text) {
    parser.StartElement(u"paragraph", {{u"element", kind}});
    parser.StartElement(u"textRun", {});
    parser.Characters(text);
    parser.EndElement(u"textRun");
}

int main() {
    StoryParser parser; // a real host lets its XML parser make these calls
    parser.StartDocument();
    parser.StartElement(u"Talewright", {{u"version", u"1.0"}});
    parser.StartElement(u"document", {});
    parser.StartElement(u"stream", {{u"name", u"body"}});
    parser.StartElement(u"section", {});
    parser.StartElement(u"scene", {{u"sceneNumber", u"1"}});
    AddParagraph(parser, u"SceneHeading", u"EXT. PIER - NIGHT");
    AddParagraph(parser, u"Action", u"Rain.");
    parser.EndDocument();

    if (parser.HasParseError() || !SXMPMeta::Initialize()) {
        return 1;
    }
    {
        SXMPMeta clip;
        std::vector<zonmetadata::Path> changed;
        const auto scene = parser.GetStory()->document->body->section->scenes.front();
        const UString problem = WriteSceneMetadataIntoXMP(scene, clip, changed);
        std::cout << zoncore::UTF16to8(problem); // empty when all went well
        for (const zonmetadata::Path& path : changed) {
            std::cout << "changed " << path.PropertyPath() << '\n';
        }
        std::string action;
        GetActionFromXMP(clip, nullptr, &action);
        std::cout << "action: " << action << '\n';
    } // no SXMPMeta outlives the toolkit
    SXMPMeta::Terminate();
}

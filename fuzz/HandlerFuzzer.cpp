// Raw events straight into the handler: any order, any nesting, lone surrogates, zero units, several documents; then
// every reader of the model over what was built, also after an error.
#include <cstddef>
#include <string>

#include <zonstoryparser/StoryParser.h>

#include "ByteSource.h"
#include "SceneInvariants.h"
#include "Target.h"

namespace {

using zoncore::UString;

const UString kNames[] = {u"Talewright", u"document", u"stream",        u"section", u"scene", u"paragraph",
                          u"textRun",    u"metaData", u"commentStream", u"Tag",     u"other", u""};
const UString kAttributes[] = {u"objID",        u"element", u"name",  u"version", u"sceneNumber",
                               u"shotDuration", u"label",   u"other", u"template"};
const UString kValues[] = {u"",       u"1.0",       u"body",   u"header", u"footer",       u"SceneHeading",
                           u"Dialog", u"Character", u"Action", u"1:30",   u"INT. A - DAY", u"id"};

UString Value(fuzz::ByteSource& data) {
    return data.Below(8) == 0 ? data.Units(12) : data.OneOf(kValues);
}

zoncore::AttributeMap Attributes(fuzz::ByteSource& data) {
    zoncore::AttributeMap attributes;
    for (std::size_t count = data.Below(5); count > 0; --count) {
        attributes[data.OneOf(kAttributes)] = Value(data);
    }
    return attributes;
}

void Deliver(fuzz::ByteSource& data, zonstoryparser::StoryParser& parser) {
    const std::size_t kind = data.Below(16);
    if (kind == 0) {
        parser.StartDocument();
    } else if (kind == 1) {
        parser.EndDocument();
    } else if (kind == 2) {
        parser.SetParseError(data.Units(12));
    } else if (kind < 6) {
        parser.Characters(Value(data));
    } else if (kind < 10) {
        parser.EndElement(data.OneOf(kNames));
    } else {
        const UString& name = data.OneOf(kNames); // first, so that every compiler takes a file apart in the same way
        parser.StartElement(name, Attributes(data));
    }
}

// A whole story's beginning, so that the events after it meet open elements.
void OpenAScene(zonstoryparser::StoryParser& parser) {
    parser.StartDocument();
    parser.StartElement(u"Talewright", {{u"version", u"1.0"}});
    parser.StartElement(u"document", {});
    parser.StartElement(u"stream", {{u"name", u"body"}});
    parser.StartElement(u"section", {});
    parser.StartElement(u"scene", {});
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    ByteSource data(bytes);
    zonstoryparser::StoryParser parser;
    if (data.Below(2) == 0) {
        OpenAScene(parser);
    }
    while (!data.IsEmpty()) {
        Deliver(data, parser);
    }
    CheckStory(parser.GetStory());
}

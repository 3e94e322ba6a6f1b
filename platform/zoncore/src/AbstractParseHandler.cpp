#include <zoncore/AbstractParseHandler.h>

namespace zoncore {

AbstractParseHandler::~AbstractParseHandler() = default;
void AbstractParseHandler::StartDocument() {}
void AbstractParseHandler::StartElement(const UString&, const AttributeMap&) {}
void AbstractParseHandler::StartElementWithNamespace(const UString&, const UString&, const UString&,
                                                     const AttributeMap&) {}
void AbstractParseHandler::EndElement(const UString&) {}
void AbstractParseHandler::EndElementWithNamespace(const UString&, const UString&, const UString&) {}
void AbstractParseHandler::StartCDATA() {}
void AbstractParseHandler::EndCDATA() {}
void AbstractParseHandler::Characters(const UString&) {}
void AbstractParseHandler::Comment(const UString&) {}
void AbstractParseHandler::EndDocument() {}
void AbstractParseHandler::StartPrefixMapping(const UString&, const UString&) {}
void AbstractParseHandler::EndPrefixMapping(const UString&) {}

} // namespace zoncore

#pragma once

#include <map>

#include <zoncore/Export.h>
#include <zoncore/UString.h>

namespace zoncore {

/// The attributes of one element, by name.
using AttributeMap = std::map<UString, UString>;

/// Receives the events of a SAX-style XML parser, in document order. Every operation does nothing unless overridden.
///
/// The order of the operations is the order of their slots in the virtual table. Hosts are compiled against it: an
/// operation is never moved, removed or inserted.
class ZONCORE_API AbstractParseHandler {
public:
    AbstractParseHandler() = default;
    AbstractParseHandler(const AbstractParseHandler&) = delete;
    AbstractParseHandler& operator=(const AbstractParseHandler&) = delete;

    virtual ~AbstractParseHandler();
    virtual void StartDocument();
    virtual void StartElement(const UString& name, const AttributeMap& attributes);
    virtual void StartElementWithNamespace(const UString& namespaceURI, const UString& localName,
                                           const UString& qualifiedName, const AttributeMap& attributes);
    virtual void EndElement(const UString& name);
    virtual void EndElementWithNamespace(const UString& namespaceURI, const UString& localName,
                                         const UString& qualifiedName);
    virtual void StartCDATA();
    virtual void EndCDATA();
    /// A piece of character data; one text may arrive in any number of pieces, cut anywhere.
    virtual void Characters(const UString& text);
    virtual void Comment(const UString& text);
    virtual void EndDocument();
    virtual void StartPrefixMapping(const UString& prefix, const UString& namespaceURI);
    virtual void EndPrefixMapping(const UString& prefix);
};

} // namespace zoncore

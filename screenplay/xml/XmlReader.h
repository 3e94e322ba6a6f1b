#pragma once

#include <zoncore/AbstractParseHandler.h>
#include <zoncore/UString.h>
#include <zonscreenplay/Screenplay.h>

namespace zonscreenplay {

/// What one format makes of a file's elements. It may throw anything: the driver keeps that from the XML parser.
class XmlReader {
public:
    XmlReader() = default;
    XmlReader(const XmlReader&) = delete;
    XmlReader& operator=(const XmlReader&) = delete;
    virtual ~XmlReader() = default;

    virtual void Start(const zoncore::UString& name, const zoncore::AttributeMap& attributes) = 0;
    virtual void End(const zoncore::UString& name) = 0;
    /// Text between two tags, in pieces where it is long.
    virtual void Characters(const zoncore::UString& text) = 0;
    /// Called once, after the root has ended.
    virtual Screenplay Finish() = 0;
};

} // namespace zonscreenplay

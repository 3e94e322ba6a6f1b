#pragma once

#include "source/ScriptBuilder.h"
#include "xml/XmlDriver.h"

namespace zonscreenplay {

/// Reads FDX of any version: the paragraphs of the script itself, and of dual dialogue in it.
class FdxReader : public XmlReader {
public:
    explicit FdxReader(const XmlDriver& driver);

    void Start(const zoncore::UString& name, const zoncore::AttributeMap& attributes) override;
    void End(const zoncore::UString& name) override;
    void Characters(const zoncore::UString& text) override;
    Screenplay Finish() override;

private:
    const XmlDriver& mDriver;
    ScriptBuilder mBuilder;
};

} // namespace zonscreenplay

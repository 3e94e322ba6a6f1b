#pragma once

#include <string>

#include <zonstoryparser/StoryParser.h>

#include "source/LineRecorder.h"
#include "xml/XmlDriver.h"

namespace zonscreenplay {

/// A story file's elements are what the library's handler takes: they are handed on as they are.
class StoryFileReader : public XmlReader {
public:
    StoryFileReader(const XmlDriver& driver, const zoncore::UString& root);

    void Start(const zoncore::UString& name, const zoncore::AttributeMap& attributes) override;
    void End(const zoncore::UString& name) override;
    void Characters(const zoncore::UString& text) override;
    Screenplay Finish() override;

private:
    void RecordLine(const zoncore::UString& name);
    void CheckHandler();

    const XmlDriver& mDriver;
    std::string mRootName;
    Position mRootPosition;
    zonstoryparser::StoryParser mHandler;
    LineRecorder mLines;
    std::size_t mScenes = 0;
};

} // namespace zonscreenplay

#include "storyfile/StoryFileReader.h"

#include <utility>

namespace zonscreenplay {

StoryFileReader::StoryFileReader(const XmlDriver& driver, const zoncore::UString& root)
    : mDriver(driver), mRootName(zoncore::UTF16to8(root)), mRootPosition(driver.Here()) {
    mHandler.StartDocument();
}

void StoryFileReader::Start(const zoncore::UString& name, const zoncore::AttributeMap& attributes) {
    const std::size_t limit = mDriver.Options().limits.scenes;
    if (name == u"scene" && ++mScenes > limit) {
        mDriver.Fail(mDriver.Here(), "the story has more than " + std::to_string(limit) + " scenes");
    }
    mHandler.StartElement(name, attributes);
    CheckHandler();
    if (mDriver.Options().recordLines) {
        RecordLine(name);
    }
}

void StoryFileReader::End(const zoncore::UString& name) {
    mHandler.EndElement(name);
    CheckHandler();
}

void StoryFileReader::Characters(const zoncore::UString& text) {
    mHandler.Characters(text);
}

Screenplay StoryFileReader::Finish() {
    mHandler.EndDocument();
    Screenplay result;
    result.root = mHandler.GetStory();
    if (!result.root) {
        const bool isOther = mDriver.Options().format != Format::Story;
        mDriver.Fail(mRootPosition, "no story: the file's root is <" + mRootName + ">, not <Talewright>" +
                                        (isOther ? " or <FinalDraft>" : ""));
    }
    const auto& document = result.root->document;
    if (document && document->body && document->body->section) {
        result.scenes.resize(document->body->section->scenes.size());
    }
    result.lines = mLines.Finish();
    return result;
}

void StoryFileReader::RecordLine(const zoncore::UString& name) {
    if (name == u"paragraph") {
        mLines.AfterParagraph(mDriver.Here().line);
    } else if (name == u"scene") {
        mLines.AfterScene(mDriver.Here().line);
    } else if (name == u"section") {
        mLines.AfterSection(mHandler.GetStory().get());
    }
}

void StoryFileReader::CheckHandler() {
    if (mHandler.HasParseError()) {
        mDriver.Fail(mDriver.Here(), zoncore::UTF16to8(mHandler.GetParseError()));
    }
}

} // namespace zonscreenplay

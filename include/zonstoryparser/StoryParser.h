#pragma once

#include <cstdint>

#include <zoncore/AbstractParseHandler.h>
#include <zonstoryparser/Export.h>
#include <zonstoryparser/StoryModel.h>

namespace zonstoryparser {

/// Builds the story model from the events of the host's XML parser.
///
///     StoryParser parser;
///     parser.StartDocument();
///     ...                                   // StartElement, Characters, EndElement, in document order
///     parser.EndDocument();
///     if (!parser.HasParseError()) {
///         boost::intrusive_ptr<Talewright> story = parser.GetStory();
///     }
///
/// Nothing in a file makes it throw (only memory may run out). The first structural error is recorded and all later
/// events are ignored; what was built until then stays reachable, and every function of this library copes with such a
/// partial story. One handler serves one XML parser on one thread, and any number of files one after the other; but the
/// last text run stays open until the next one starts, so that a run outside any paragraph may still fill it. A host that
/// keeps an earlier story uses a new handler for the next.
///
/// The names without a namespace are matched as they stand in the file; StartElementWithNamespace() and its kin do
/// nothing.
class ZONSTORYPARSER_API StoryParser : public zoncore::AbstractParseHandler {
public:
    StoryParser();
    ~StoryParser() override;

    /// Forgets the previous story and error. The text of an old error stays until the next one.
    void StartDocument() override;
    void StartElement(const UString& name, const zoncore::AttributeMap& attributes) override;
    void EndElement(const UString& name) override;
    void Characters(const UString& text) override;
    void EndDocument() override;

    /// Records an error, in place of any earlier one, and stops building. Public so that the host can record what its
    /// XML parser or the file system reports in the same place.
    void SetParseError(const UString& message);

    /// The kind of a paragraph with these attributes; an ElementType as a number. Reads no state.
    std::uint32_t GetElement(const zoncore::AttributeMap& attributes) const;

    /// The story, also a partial one after an error; null before the root element.
    boost::intrusive_ptr<Talewright> GetStory() const { return mStory; }
    bool HasParseError() const { return mHasError; }
    /// Meaningful only while HasParseError() is true.
    UString GetParseError() const { return mError; }

private:
    ZONSTORYPARSER_LOCAL void StartRoot(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartDocumentElement(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartStream(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartSection(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartScene(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartParagraph(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartTextRun(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartCommentStream(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void StartTag(const zoncore::AttributeMap& attributes);
    ZONSTORYPARSER_LOCAL void EndTextRun();
    ZONSTORYPARSER_LOCAL void EndMetaData();
    ZONSTORYPARSER_LOCAL void CloseOpenElements();

    std::int32_t mCurrentTag; // of the element that started or ended last
    UString mText;            // character data since the last start tag
    bool mHasError = false;
    UString mError;
    boost::intrusive_ptr<Talewright> mStory;
    // One open slot a kind and no stack: a new element of a kind takes the place of the one that is open.
    boost::intrusive_ptr<Document> mDocument;
    boost::intrusive_ptr<CommentStream> mCommentStream;
    boost::intrusive_ptr<Stream> mStream;
    boost::intrusive_ptr<Section> mSection;
    boost::intrusive_ptr<Scene> mScene;
    boost::intrusive_ptr<Paragraph> mParagraph;
    boost::intrusive_ptr<TextRun> mTextRun; // the last one started, kept beyond its end tag
};

} // namespace zonstoryparser

#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <zoncore/RefCounted.h>
#include <zoncore/UString.h>
#include <zonstoryparser/Export.h>

/// The parsed story: Talewright → Document → Stream and CommentStream → Section → Scene → Paragraph → TextRun.
///
/// Parents own their children through `boost::intrusive_ptr`; nothing points upwards, so a handle to one scene keeps
/// that scene alive after the root is gone. StoryParser alone writes the tree; once parsing has ended it is read-only,
/// and handles may be copied and dropped on any thread. Any pointer may be null: a story need not have a header, a
/// footer or even a body.
namespace zonstoryparser {

using zoncore::UString;

/// The identity of an element: its "objID" attribute, empty when it has none. Need not be unique.
class ZONSTORYPARSER_API ObjectID {
public:
    ObjectID() = default;
    explicit ObjectID(UString text) : mText(std::move(text)) {}

    UString AsString() const { return mText; }

private:
    UString mText;
};

/// The kind of a paragraph. The numbers never change: hosts switch on them.
enum ElementType : std::uint32_t {
    kSceneHeading = 200,
    kCharacter = 201,
    kDialog = 202,
    kAction = 203,
    kShot = 204,
    kParenthetical = 205,
    kTransition = 206,
    kUnknownElement = 207, ///< No "element" attribute, or any other text in it.
};

/// A stretch of text in one style.
class ZONSTORYPARSER_API TextRun : public zoncore::RefCountedObject {
public:
    TextRun();
    ~TextRun() override;

    ObjectID objectID;
    UString text; ///< Verbatim, with all its white space.
};

/// One element of the script: a heading, a character cue, a speech, a piece of action.
class ZONSTORYPARSER_API Paragraph : public zoncore::RefCountedObject {
public:
    Paragraph();
    ~Paragraph() override;

    ObjectID objectID;
    ElementType element = kUnknownElement;
    std::vector<boost::intrusive_ptr<TextRun>> textRuns; ///< Their texts, joined, are the paragraph's: GetTextRuns().
};

class ZONSTORYPARSER_API Scene : public zoncore::RefCountedObject {
public:
    Scene();
    ~Scene() override;

    ObjectID objectID;
    UString sceneNumber;  ///< As written: "12", "12A"; empty when the scene has none.
    UString shotDuration; ///< "h:m:s" as written in the scene's last heading; empty when that has none.
    std::vector<boost::intrusive_ptr<Paragraph>> paragraphs;
};

class ZONSTORYPARSER_API Section : public zoncore::RefCountedObject {
public:
    Section();
    ~Section() override;

    ObjectID objectID;
    std::vector<boost::intrusive_ptr<Scene>> scenes;
};

/// Comments of one author, laid out like a stream.
class ZONSTORYPARSER_API CommentStream : public zoncore::RefCountedObject {
public:
    CommentStream();
    ~CommentStream() override;

    ObjectID objectID;
    UString name;
    UString commentAuthor;
    UString dependent; ///< As written, though it reads like a flag.
    UString commentAuthorID;
    boost::intrusive_ptr<Section> section;
};

class ZONSTORYPARSER_API Stream : public zoncore::RefCountedObject {
public:
    Stream();
    ~Stream() override;

    ObjectID objectID;
    UString name; ///< "header", "body" or "footer": the place in the Document.
    boost::intrusive_ptr<Section> section;
};

class ZONSTORYPARSER_API Document : public zoncore::RefCountedObject {
public:
    Document();
    ~Document() override;

    boost::intrusive_ptr<Stream> header;
    boost::intrusive_ptr<Stream> body; ///< The screenplay itself.
    boost::intrusive_ptr<Stream> footer;
    UString version; ///< The document's own; never checked.
    std::vector<boost::intrusive_ptr<CommentStream>> commentStreams;
};

/// The root of one parsed story.
class ZONSTORYPARSER_API Talewright : public zoncore::RefCountedObject {
public:
    Talewright();
    ~Talewright() override;

    boost::intrusive_ptr<Document> document;
    UString version; ///< Of the file format; the parser accepts 1.0 and what stands beneath it, such as 1.0.3.
    UString documentType;
    UString templateName;
    UString metaData;               ///< The text of the "metaData" element, verbatim.
    std::vector<UString> tagLabels; ///< One for every "Tag" element, in file order; empty for one without a label.
};

} // namespace zonstoryparser

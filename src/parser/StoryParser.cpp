#include <zonstoryparser/StoryParser.h>

#include <string_view>
#include <utility>

#include <zoncore/Tokenizer.h>

#include "parser/AttributeNames.h"
#include "parser/StoryTag.h"

namespace zonstoryparser {

using zoncore::AttributeMap;

namespace {

struct ElementName {
    std::u16string_view name;
    ElementType type;
};

constexpr ElementName kElementNames[] = {
    {u"SceneHeading", kSceneHeading},
    {u"Character", kCharacter},
    {u"Dialog", kDialog},
    {u"Action", kAction},
    {u"Shot", kShot},
    {u"Parenthetical", kParenthetical},
    {u"Transition", kTransition},
};

// A missing attribute is an empty one, never an earlier value. An element has a handful of them: looking at their lengths
// one after the other is quicker than the map's own search, which compares character by character.
UString Attribute(const AttributeMap& attributes, const UString& name) {
    for (const auto& [known, value] : attributes) {
        if (known.size() == name.size() && known == name) {
            return value;
        }
    }
    return {};
}

ObjectID GetObjectID(const AttributeMap& attributes) {
    static const UString kObjectID = u"objID";
    return ObjectID(Attribute(attributes, kObjectID));
}

constexpr std::size_t kKeptText = 4096; // code units; a run has a few hundred

// Takes the gathered text. A short one is copied: the copy takes no more room than it needs, and the gatherer keeps its
// own. A long one is handed over, so that it is never held twice.
UString TakeText(UString& gathered) {
    if (gathered.size() > kKeptText) {
        return std::exchange(gathered, {});
    }
    UString taken = gathered;
    gathered.clear();
    return taken;
}

// Drops the gathered text, and much room with it.
void DropText(UString& gathered) {
    if (gathered.capacity() > 2 * kKeptText) {
        UString().swap(gathered);
    }
    gathered.clear();
}

bool IsSupportedVersion(const UString& version) {
    zoncore::Tokenizer pieces(version, u".", 0, false);
    const UString major = pieces.NextToken();
    const UString minor = pieces.NextToken();
    return major == u"1" && minor == u"0";
}

} // namespace

StoryParser::StoryParser() : mCurrentTag(kTagUnknown) {}

StoryParser::~StoryParser() = default;

void StoryParser::StartDocument() {
    mHasError = false;
    mStory.reset();
    CloseOpenElements();
}

void StoryParser::StartElement(const UString& name, const AttributeMap& attributes) {
    DropText(mText);
    if (mHasError) {
        return;
    }
    mCurrentTag = TagCode(name);
    switch (mCurrentTag) {
    case kTagRoot:
        return StartRoot(attributes);
    case kTagDocument:
        return StartDocumentElement(attributes);
    case kTagStream:
        return StartStream(attributes);
    case kTagSection:
        return StartSection(attributes);
    case kTagScene:
        return StartScene(attributes);
    case kTagParagraph:
        return StartParagraph(attributes);
    case kTagTextRun:
        return StartTextRun(attributes);
    case kTagCommentStream:
        return StartCommentStream(attributes);
    case kTagTag:
        return StartTag(attributes);
    default:
        return;
    }
}

void StoryParser::EndElement(const UString& name) {
    if (mHasError) {
        return;
    }
    mCurrentTag = TagCode(name);
    switch (mCurrentTag) {
    case kTagDocument:
        return mDocument.reset();
    case kTagStream:
        return mStream.reset();
    case kTagSection:
        return mSection.reset();
    case kTagScene:
        return mScene.reset();
    case kTagParagraph:
        return mParagraph.reset();
    case kTagCommentStream:
        return mCommentStream.reset();
    case kTagTextRun:
        return EndTextRun();
    case kTagMetaData:
        return EndMetaData();
    default:
        return;
    }
}

void StoryParser::Characters(const UString& text) {
    if (!mHasError) {
        mText += text;
    }
}

void StoryParser::EndDocument() {
    CloseOpenElements();
}

void StoryParser::SetParseError(const UString& message) {
    mHasError = true;
    mError = message;
}

std::uint32_t StoryParser::GetElement(const AttributeMap& attributes) const {
    static const UString kElement = u"element";
    const auto found = attributes.find(kElement);
    if (found != attributes.end()) {
        for (const ElementName& candidate : kElementNames) {
            if (found->second == candidate.name) {
                return candidate.type;
            }
        }
    }
    return kUnknownElement;
}

// On purpose: a second root takes the place of the first, and a root of another version stays in reach.
// Held by the tests StoryParser, SecondRootReplacesTheFirst and RecordsTheFirstStructuralError.
void StoryParser::StartRoot(const AttributeMap& attributes) {
    mStory = new Talewright;
    mStory->version = Attribute(attributes, kVersion);
    mStory->documentType = Attribute(attributes, kDocumentType);
    mStory->templateName = Attribute(attributes, kTemplate);
    if (!IsSupportedVersion(mStory->version)) {
        SetParseError(u"Wrong Version.  The parser doesn't support version:  " + mStory->version);
    }
}

void StoryParser::StartDocumentElement(const AttributeMap& attributes) {
    if (!mStory || mStory->document || mDocument) {
        return SetParseError(u"We found a Document, but we already had one, are there two?");
    }
    mDocument = new Document;
    mDocument->version = Attribute(attributes, kVersion);
    mStory->document = mDocument;
}

void StoryParser::StartStream(const AttributeMap& attributes) {
    if (!mDocument || mStream) {
        return SetParseError(u"We found a Stream, but we already found one.  Are there two?");
    }
    mStream = new Stream;
    mStream->objectID = GetObjectID(attributes);
    mStream->name = Attribute(attributes, kName);

    struct Place {
        std::u16string_view name;
        boost::intrusive_ptr<Stream>& stream;
        const char16_t* takenMessage;
    };
    const Place places[] = {
        {u"body", mDocument->body, u"We found a Stream, but it's not part of a BodyStream?"},
        {u"header", mDocument->header, u"We found a Header, but it's not part of a HeaderStream?"},
        {u"footer", mDocument->footer, u"We found a Footer, but it's not part of a FooterStream?"},
    };
    for (const Place& place : places) {
        if (mStream->name != place.name) {
            continue;
        }
        if (place.stream) {
            return SetParseError(place.takenMessage);
        }
        place.stream = mStream;
    }
    // A stream of any other name is built but belongs nowhere: it goes when it closes.
}

void StoryParser::StartSection(const AttributeMap& attributes) {
    const bool fitsStream = mStream && !mStream->section;
    const bool fitsCommentStream = mCommentStream && !mCommentStream->section && !mSection;
    if (!fitsStream && !fitsCommentStream) {
        return SetParseError(u"We found a Section, but it's not part of a Stream or CommentStream?");
    }
    mSection = new Section;
    mSection->objectID = GetObjectID(attributes);
    (fitsStream ? mStream->section : mCommentStream->section) = mSection;
}

void StoryParser::StartScene(const AttributeMap& attributes) {
    if (!mSection) {
        return SetParseError(u"We founda a Scene, but it's not part of a Section?");
    }
    mScene = new Scene;
    mScene->objectID = GetObjectID(attributes);
    mScene->sceneNumber = Attribute(attributes, kSceneNumber);
    mSection->scenes.push_back(mScene);
}

void StoryParser::StartParagraph(const AttributeMap& attributes) {
    if (!mScene) {
        return;
    }
    mParagraph = new Paragraph;
    mParagraph->objectID = GetObjectID(attributes);
    mParagraph->element = static_cast<ElementType>(GetElement(attributes));
    if (mParagraph->element == kSceneHeading) {
        mScene->shotDuration = Attribute(attributes, kShotDuration);
    }
    mScene->paragraphs.push_back(mParagraph);
}

void StoryParser::StartTextRun(const AttributeMap& attributes) {
    if (!mParagraph) {
        return;
    }
    mTextRun = new TextRun;
    mTextRun->objectID = GetObjectID(attributes);
    mParagraph->textRuns.push_back(mTextRun);
}

void StoryParser::StartCommentStream(const AttributeMap& attributes) {
    if (!mDocument) {
        return SetParseError(u"We found a CommentStream, but it's not part of Document?");
    }
    mCommentStream = new CommentStream;
    mCommentStream->objectID = GetObjectID(attributes);
    mCommentStream->name = Attribute(attributes, kName);
    mCommentStream->commentAuthor = Attribute(attributes, kCommentAuthor);
    mCommentStream->dependent = Attribute(attributes, kDependent);
    mCommentStream->commentAuthorID = Attribute(attributes, kCommentAuthorID);
    mDocument->commentStreams.push_back(mCommentStream);
}

void StoryParser::StartTag(const AttributeMap& attributes) {
    if (mStory) { // a label before the root belongs to no story
        mStory->tagLabels.push_back(Attribute(attributes, kLabelType));
    }
}

// On purpose: a run keeps the first text it received, and the last run stays open beyond its end tag, so text of a run
// outside any paragraph goes to an empty last run. Held by the tests StoryParser, ARunKeepsItsFirstText.
void StoryParser::EndTextRun() {
    if (mTextRun && mTextRun->text.empty()) {
        mTextRun->text = TakeText(mText);
    }
}

void StoryParser::EndMetaData() {
    if (!mStory || !mStory->metaData.empty()) {
        return SetParseError(u"Metadata already exists.  Are there two?");
    }
    mStory->metaData = TakeText(mText);
}

void StoryParser::CloseOpenElements() {
    mDocument.reset();
    mCommentStream.reset();
    mStream.reset();
    mSection.reset();
    mScene.reset();
    mParagraph.reset();
    mText.shrink_to_fit(); // its content stays until the next start tag, its room does not
}

} // namespace zonstoryparser

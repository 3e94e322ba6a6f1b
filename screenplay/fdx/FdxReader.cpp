#include "fdx/FdxReader.h"

#include <algorithm>
#include <charconv>

#include "fdx/FdxLength.h"

namespace zonscreenplay {

namespace {

using zoncore::AttributeMap;
using zoncore::UString;
using zoncore::UTF16to8;

const UString kType = u"Type";
const UString kNumber = u"Number";
const UString kRevisionID = u"RevisionID";
const UString kOmitted = u"OMITTED";

const UString& Attribute(const AttributeMap& attributes, const UString& name) {
    static const UString kNone;
    const auto found = attributes.find(name);
    return found == attributes.end() ? kNone : found->second;
}

std::size_t RevisionOf(const AttributeMap& attributes) {
    std::size_t number = 0;
    for (const char16_t digit : Attribute(attributes, kRevisionID)) {
        if (digit < u'0' || digit > u'9' || number > 1'000'000) {
            return 0;
        }
        number = number * 10 + (digit - u'0');
    }
    return number;
}

bool IsBlank(const UString& text) {
    return text.find_first_not_of(u" \t\r\n\u00a0\u3000") == UString::npos;
}

// The first line of a text, cut where it is long.
std::string Excerpt(const UString& text) {
    constexpr std::size_t kLongest = 40;
    const std::size_t first = std::min(text.find_first_not_of(u" \t\r\n"), text.size());
    const std::size_t end = std::min(text.find_first_of(u"\r\n", first), text.size());
    const bool isWhole = end - first <= kLongest;
    return "'" + UTF16to8(text.substr(first, isWhole ? end - first : kLongest)) + (isWhole ? "'" : "…'");
}

std::string SceneName(const UString& number) {
    return number.empty() ? "a scene without a number" : "scene " + UTF16to8(number);
}

} // namespace

FdxReader::FdxReader(const XmlDriver& driver) : mDriver(driver), mBuilder(driver.Name(), driver.Options()) {}

void FdxReader::Pending::Clear() {
    zoncore::UString room = std::move(text);
    room.clear();
    *this = {};
    text = std::move(room);
}

void FdxReader::Start(const UString& name, const AttributeMap& attributes) {
    mPlaces.push_back(mPlaces.empty() ? FdxPlace::Root : Enter(mPlaces.back(), name));
    switch (mPlaces.back()) {
    case FdxPlace::Paragraph:
    case FdxPlace::OmittedParagraph:
        return BeginParagraph(attributes);
    case FdxPlace::Run:
        mPending.revision = std::max(mPending.revision, RevisionOf(attributes));
        return;
    case FdxPlace::Properties:
        return ReadProperties(attributes);
    case FdxPlace::Omission:
        mPending.properties.omitted = true;
        return;
    case FdxPlace::Dual:
        EndParagraph(); // what the paragraph around it has said until here
        mIsDual = true;
        mDualCues = 0;
        return;
    case FdxPlace::OmittedScene:
        mOmittedHeadings = 0;
        mAsideLine = mDriver.Here().line;
        return;
    case FdxPlace::Note:
        mAsideLine = mDriver.Here().line;
        return;
    case FdxPlace::Revision:
        return ReadRevision(attributes);
    default:
        return;
    }
}

void FdxReader::End(const UString&) {
    const FdxPlace place = mPlaces.back();
    mPlaces.pop_back();
    switch (place) {
    case FdxPlace::Paragraph:
        return EndParagraph();
    case FdxPlace::Dual:
        mIsDual = false;
        mPending.line = mDriver.Here().line; // of what the paragraph around it still says
        return;
    case FdxPlace::OmittedParagraph:
        return EndOmittedParagraph();
    case FdxPlace::OmittedScene:
        return EndOmittedScene();
    case FdxPlace::NoteParagraph:
        mAside += u'\n';
        return;
    case FdxPlace::Note:
        return EndNote();
    case FdxPlace::TitleParagraph:
        return EndTitleParagraph();
    default:
        return;
    }
}

void FdxReader::Characters(const UString& text) {
    if (mPlaces.back() == FdxPlace::Run) {
        mPending.text += text;
    } else if (mPlaces.back() == FdxPlace::NoteRun || mPlaces.back() == FdxPlace::TitleRun) {
        mAside += text;
    }
}

// The names of revisions stand behind the script.
Screenplay FdxReader::Finish() {
    Screenplay result = mBuilder.Finish(Format::FDX);
    for (SceneProperties& scene : result.scenes) {
        const auto known = mRevisions.find(scene.revision);
        if (known != mRevisions.end()) {
            scene.color = known->second.second;
            scene.revision = known->second.first.empty() ? scene.revision : known->second.first;
        }
    }
    return result;
}

void FdxReader::BeginParagraph(const AttributeMap& attributes) {
    mPending.type = Attribute(attributes, kType);
    mPending.kind = KindOfParagraph(mPending.type);
    mPending.number = Attribute(attributes, kNumber);
    mPending.line = mDriver.Here().line;
}

// Also where the paragraph is not at its end yet: what follows is then a text without a kind.
void FdxReader::EndParagraph() {
    if (mPending.kind.fate == FdxFate::LeftOut) {
        if (!IsBlank(mPending.text)) {
            mBuilder.Warn(WarningKind::LeftOut, mPending.line,
                          "a paragraph of the kind '" + UTF16to8(mPending.type) +
                              "' is left out: " + Excerpt(mPending.text));
        }
    } else if (mPending.kind.element == zonstoryparser::kSceneHeading) {
        AddScene();
    } else {
        AddText();
    }
    mPending.Clear();
}

void FdxReader::AddScene() {
    SceneProperties& pending = mPending.properties;
    if (pending.omitted) {
        // The heading may still be that of the scene that was cut.
        mPending.text = mPending.text.find(u"OMIT") == UString::npos ? kOmitted : mPending.text;
        mBuilder.Warn(WarningKind::Omitted, mPending.line, SceneName(mPending.number) + " is omitted");
    }
    mBuilder.BeginScene({UTF16to8(mPending.number), UTF16to8(mPending.text), mPending.duration}, mPending.line);
    mBuilder.Properties() = std::move(pending);
    mRevision = 0;
    AddRevision();
}

void FdxReader::AddText() {
    if (IsBlank(mPending.text)) {
        return;
    }
    if (mPending.kind.fate == FdxFate::Assumed && mUnknown.insert(mPending.type).second) {
        mBuilder.Warn(WarningKind::Assumed, mPending.line,
                      "paragraphs of the kind '" + UTF16to8(mPending.type) + "' are read as action");
    }
    mBuilder.AddParagraph(mPending.kind.element, mPending.text, mPending.line);
    AddRevision();
    if (mIsDual && mPending.kind.element == zonstoryparser::kCharacter && ++mDualCues == 2) {
        mBuilder.MarkDualDialogue();
    }
}

void FdxReader::AddRevision() {
    if (mPending.revision > mRevision) {
        mRevision = mPending.revision;
        mBuilder.Properties().revision = std::to_string(mRevision);
    }
}

void FdxReader::ReadProperties(const AttributeMap& attributes) {
    const FdxLength length = ReadLength(UTF16to8(Attribute(attributes, u"Length")));
    mPending.properties.page = UTF16to8(Attribute(attributes, u"Page"));
    mPending.properties.eighths = length.eighths;
    mPending.duration = length.duration;
}

void FdxReader::ReadRevision(const AttributeMap& attributes) {
    mRevisions.try_emplace(UTF16to8(Attribute(attributes, u"ID")), UTF16to8(Attribute(attributes, u"Name")),
                           UTF16to8(Attribute(attributes, u"Color")));
}

void FdxReader::EndOmittedParagraph() {
    if (mPending.kind.fate == FdxFate::Known && mPending.kind.element == zonstoryparser::kSceneHeading) {
        mPending.properties.omitted = true;
        mPending.text = kOmitted;
        AddScene();
        ++mOmittedHeadings;
    }
    mPending.Clear();
}

void FdxReader::EndOmittedScene() {
    if (mOmittedHeadings == 0) {
        mPending.properties.omitted = true;
        mPending.line = mAsideLine;
        AddScene();
        mPending.Clear();
    }
}

void FdxReader::EndNote() {
    if (!IsBlank(mAside)) {
        mAside.erase(mAside.find_last_not_of(u" \t\r\n") + 1);
        mBuilder.AddNote(UTF16to8(mAside), mAsideLine);
    }
    mAside.clear();
}

void FdxReader::EndTitleParagraph() {
    if (!IsBlank(mAside)) {
        mBuilder.AddTitle("", UTF16to8(mAside));
    }
    mAside.clear();
}

} // namespace zonscreenplay

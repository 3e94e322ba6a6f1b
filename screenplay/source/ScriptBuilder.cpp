#include "source/ScriptBuilder.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "source/ElementWord.h"
#include "source/Utf8.h"

namespace zonscreenplay {

namespace {

using zoncore::AttributeMap;
using zoncore::UString;
using zonstoryparser::ElementType;

const UString kScene = u"scene";
const UString kParagraph = u"paragraph";
const UString kTextRun = u"textRun";
const UString kObjectID = u"objID";
const UString kElement = u"element";
const UString kShotDuration = u"shotDuration";
const AttributeMap kNoAttributes;

bool IsBlank(const UString& text) {
    return text.find_first_not_of(u" \t\r\n\u00a0\u3000") == UString::npos;
}

bool Says(ElementType kind) {
    return kind == zonstoryparser::kAction || kind == zonstoryparser::kCharacter || kind == zonstoryparser::kDialog;
}

// Mostly they come in order.
template <typename Rows>
void SortByLine(Rows& rows) {
    const auto isAbove = [](const auto& left, const auto& right) { return left.line < right.line; };
    if (!std::is_sorted(rows.begin(), rows.end(), isAbove)) {
        std::stable_sort(rows.begin(), rows.end(), isAbove);
    }
}

UString FromUTF8(std::string_view utf8) {
    UString text;
    AppendUTF8(utf8, text);
    return text;
}

// A letter and a number: it stays within what a string keeps without allocating, up to a million paragraphs.
void AssignIdentity(char16_t letter, std::size_t number, UString& identity) {
    char digits[20] = {};
    char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    identity.assign(1, letter);
    identity.insert(identity.end(), digits, end);
}

} // namespace

ScriptBuilder::ScriptBuilder(std::string name, const ReadOptions& options)
    : mName(std::move(name)), mOptions(options), mIdentity(mParagraph[kObjectID]), mElement(mParagraph[kElement]) {
    mHandler.StartDocument();
    mHandler.StartElement(u"Talewright", {{u"version", u"1.0"}, {u"documentType", u"screenplay"}});
    mHandler.StartElement(u"document", kNoAttributes);
    mHandler.StartElement(u"stream", {{kObjectID, u"body"}, {u"name", u"body"}});
    mHandler.StartElement(u"section", kNoAttributes);
    mResult.root = mHandler.GetStory();
    mSection = mResult.root->document->body->section.get();
    mLines.AfterSection(mResult.root.get());
}

void ScriptBuilder::BeginScene(const Heading& heading, std::size_t line) {
    LeaveOutHeldBack();
    OpenScene(FromUTF8(heading.number), line);
    mHasHeading = true;
    mDuration = FromUTF8(heading.duration);
    AddParagraph(zonstoryparser::kSceneHeading, heading.text, line);
}

SceneProperties& ScriptBuilder::Properties() {
    return mResult.scenes.empty() ? mNowhere : mResult.scenes.back();
}

void ScriptBuilder::AddParagraph(ElementType kind, std::string_view text, std::size_t line) {
    mText.clear();
    AppendUTF8(text, mText);
    Keep(kind, mText, line);
}

void ScriptBuilder::AddParagraph(ElementType kind, const UString& text, std::size_t line) {
    Keep(kind, text, line);
}

void ScriptBuilder::MarkDualDialogue() {
    if (mLeftCue && mRightCue) {
        mResult.dualDialogue.push_back({mLeftCue, mRightCue});
        mLeftCue.reset(); // a third speech has no side
    }
}

void ScriptBuilder::AddTitle(std::string_view key, std::string_view value) {
    Spend(2, 1);
    mResult.titlePage.emplace_back(key, value);
}

void ScriptBuilder::AddNote(std::string_view text, std::size_t line) {
    Spend(2, line);
    mResult.notes.push_back({line, std::string(text)});
}

void ScriptBuilder::Warn(WarningKind kind, std::size_t line, std::string text) {
    Spend(2, line);
    mResult.warnings.push_back({kind, line, std::move(text)});
}

void ScriptBuilder::Fail(Position position, const std::string& message) const {
    throw ReadError(mName, position, message);
}

Screenplay ScriptBuilder::Finish(Format format) {
    if (!mHeldBack.empty()) {
        OpenSceneBeforeHeading(mHeldBack.front().line); // the script has nothing else
    }
    if (!mResult.scenes.empty()) {
        mHandler.EndElement(kScene);
    }
    mHandler.EndDocument();
    mResult.format = format;
    mResult.lines = mLines.Finish();
    SortByLine(mResult.notes);
    SortByLine(mResult.warnings);
    return std::move(mResult);
}

void ScriptBuilder::OpenScene(const UString& number, std::size_t line) {
    if (mResult.scenes.size() == mOptions.limits.scenes) {
        Fail({line, 1}, "the story has more than " + std::to_string(mOptions.limits.scenes) + " scenes");
    }
    Spend(2, line);
    if (!mResult.scenes.empty()) {
        mHandler.EndElement(kScene);
    }
    mResult.scenes.emplace_back();
    mLeftCue.reset();
    mRightCue.reset();
    UString identity;
    AssignIdentity(u's', mResult.scenes.size(), identity);
    mHandler.StartElement(kScene, {{kObjectID, identity}, {u"sceneNumber", number}});
    if (mOptions.recordLines) {
        mLines.AfterScene(line);
    }
}

void ScriptBuilder::OpenSceneBeforeHeading(std::size_t line) {
    const std::vector<HeldBack> heldBack = std::exchange(mHeldBack, {});
    const std::size_t first = heldBack.empty() ? line : heldBack.front().line;
    OpenScene({}, first);
    Warn(WarningKind::BeforeHeading, first, "text before the first heading is a scene of its own");
    for (const HeldBack& paragraph : heldBack) {
        Emit(paragraph.kind, paragraph.text, paragraph.line);
    }
}

void ScriptBuilder::LeaveOutHeldBack() {
    for (const HeldBack& paragraph : mHeldBack) {
        Warn(WarningKind::LeftOut, paragraph.line,
             "what stands before the first heading is left out: '" + zoncore::UTF16to8(paragraph.text) + "'");
    }
    mHeldBack.clear();
}

void ScriptBuilder::Keep(ElementType kind, const UString& text, std::size_t line) {
    if (IsBlank(text)) {
        return;
    }
    if (text.size() > mOptions.limits.text) {
        Fail({line, 1}, "a text is longer than " + std::to_string(mOptions.limits.text) + " characters");
    }
    Spend(2, line);
    if (mResult.scenes.empty() && !Says(kind)) {
        mHeldBack.push_back({kind, text, line});
        return;
    }
    if (mResult.scenes.empty()) {
        OpenSceneBeforeHeading(line);
    }
    Emit(kind, text, line);
}

void ScriptBuilder::Emit(ElementType kind, const UString& text, std::size_t line) {
    StartParagraph(kind);
    mHandler.StartElement(kTextRun, kNoAttributes);
    mHandler.Characters(text);
    mHandler.EndElement(kTextRun);
    mHandler.EndElement(kParagraph);
    if (mOptions.recordLines) {
        mLines.AfterParagraph(line);
    }
    if (kind == zonstoryparser::kCharacter) {
        mLeftCue = std::exchange(mRightCue, mSection->scenes.back()->paragraphs.back());
        mHasCue = true;
    }
}

void ScriptBuilder::StartParagraph(ElementType kind) {
    AssignIdentity(u'p', ++mParagraphs, mIdentity);
    mElement = ElementWord(kind);
    if (kind == zonstoryparser::kSceneHeading && !mDuration.empty()) {
        AttributeMap withDuration = mParagraph;
        withDuration[kShotDuration] = mDuration;
        mHandler.StartElement(kParagraph, withDuration);
    } else {
        mHandler.StartElement(kParagraph, mParagraph);
    }
}

void ScriptBuilder::Spend(std::size_t items, std::size_t line) {
    mItems += items;
    if (mItems > mOptions.limits.items) {
        Fail({line, 1},
             "the story has more than " + std::to_string(mOptions.limits.items) + " elements and attributes");
    }
}

} // namespace zonscreenplay

#include "fountain/FountainParser.h"

#include "fountain/Characters.h"
#include "fountain/Emphasis.h"
#include "fountain/LineKinds.h"
#include "fountain/TitlePage.h"

namespace zonscreenplay::fountain {

FountainParser::FountainParser(std::string& text, const ReadOptions& options, ScriptBuilder& builder)
    : mOptions(options), mBuilder(builder), mReader(text) {}

void FountainParser::Parse() {
    Advance();
    Advance();
    while (mHasLine && mLine.IsEmpty()) {
        Advance();
    }
    if (mHasLine && BeginsTitlePage(mLine, mNext)) {
        ReadTitlePage();
    }
    for (; mHasLine; Advance()) {
        ReadLine();
    }
    Flush();
}

void FountainParser::Advance() {
    mLine = mNext;
    mHasLine = mHasNext;
    mHasNext = mReader.Next(mNext);
    if (mNext.text.size() > mOptions.limits.text) {
        mBuilder.Fail({mNext.number, 1}, "a line is longer than " + std::to_string(mOptions.limits.text) + " bytes");
    }
}

void FountainParser::ReadTitlePage() {
    TitlePage page;
    for (; mHasLine && !mLine.IsEmpty(); Advance()) {
        page.AddLine(mLine);
    }
    page.Finish(mBuilder);
}

void FountainParser::ReadLine() {
    if (mLine.IsEmpty()) {
        return EndParagraphs();
    }
    const std::string_view line = WithoutBlanks(mLine.text);
    if (mIsSpeech) {
        return ReadSpeech(line);
    }
    if (ReadStructure(line) || (mIsAfterEmpty && ReadElement(line))) {
        return;
    }
    ReadAction(line);
    mIsAfterEmpty = false;
}

void FountainParser::EndParagraphs() {
    if (mIsSpeech && mLine.hasTwoBlanks) {
        return AddLine(zonstoryparser::kDialog, {});
    }
    Flush();
    mIsSpeech = false;
    mIsAfterEmpty = true;
}

// What orders a script and is none of its text.
bool FountainParser::ReadStructure(std::string_view line) {
    const bool isPageBreak = IsPageBreak(line);
    if (!isPageBreak && line.front() != '#' && line.front() != '=') {
        return false;
    }
    Flush();
    if (!isPageBreak) {
        mBuilder.AddNote(line, mLine.number);
    }
    mIsAfterEmpty = true;
    return true;
}

// A line whose mark says what it is can be nothing else.
bool FountainParser::ReadElement(std::string_view line) {
    constexpr std::string_view kMarksOfLines = "!>~";
    if (kMarksOfLines.find(line.front()) != std::string_view::npos) {
        return false;
    }
    if (ReadHeading(line) || ReadTransition(line) || ReadCue(line)) {
        mIsAfterEmpty = false;
        return true;
    }
    return false;
}

bool FountainParser::ReadHeading(std::string_view line) {
    if (IsForcedHeading(line)) {
        BeginScene(line.substr(1));
        return true;
    }
    if (IsHeading(line)) {
        BeginScene(line);
        return true;
    }
    if (line.front() == '*' || line.front() == '_') {
        const std::string bare = WithoutEmphasis(line);
        if (IsHeading(bare)) {
            BeginScene(bare);
            return true;
        }
    }
    if (!mOptions.strictFountain && mNext.IsEmpty() && IsHeadingOfKnownSetting(line)) {
        mBuilder.Warn(WarningKind::Assumed, mLine.number,
                      "read as a scene heading, which Fountain alone does not know");
        BeginScene(line);
        return true;
    }
    return false;
}

bool FountainParser::ReadTransition(std::string_view line) {
    if (line.front() == '@' || !IsTransition(mLine.text)) {
        return false;
    }
    Add(zonstoryparser::kTransition, line);
    return true;
}

bool FountainParser::ReadCue(std::string_view line) {
    const bool isForced = line.front() == '@';
    const bool isFollowed = !mNext.IsEmpty() && !IsPageBreak(WithoutBlanks(mNext.text));
    if (!isForced && (!isFollowed || !IsCue(line))) {
        return false;
    }
    const Cue cue = fountain::ReadCue(line.substr(isForced ? 1 : 0));
    if (cue.text.empty()) {
        return false;
    }
    mBuilder.AddParagraph(zonstoryparser::kCharacter, cue.text, mLine.number);
    if (cue.isDual) {
        mBuilder.MarkDualDialogue();
    }
    mIsSpeech = true;
    return true;
}

void FountainParser::BeginScene(std::string_view heading) {
    const NumberedHeading numbered = SplitNumber(heading == "##" ? "" : heading);
    mPlain.clear();
    AppendPlainText(numbered.text, mPlain);
    mBuilder.BeginScene({numbered.number, mPlain, ""}, mLine.number);
}

void FountainParser::ReadSpeech(std::string_view line) {
    if (IsPageBreak(line)) {
        return;
    }
    if (IsParenthetical(line)) {
        Flush();
        return Add(zonstoryparser::kParenthetical, line);
    }
    WarnOfHeading(line);
    const bool isLyric = line.front() == '~';
    AddLine(zonstoryparser::kDialog, isLyric ? WithoutBlanks(line.substr(1)) : line);
}

// Indentation is kept, as on the page, save behind a mark that sets the line itself.
void FountainParser::ReadAction(std::string_view line) {
    if (IsCentred(line)) {
        return AddLine(zonstoryparser::kAction, WithoutBlanks(line.substr(1, line.size() - 2)));
    }
    switch (line.front()) {
    case '>':
        Flush();
        return Add(zonstoryparser::kTransition, WithoutBlanks(line.substr(1)));
    case '!':
        return AddLine(zonstoryparser::kAction, line.substr(1));
    case '~':
        return AddLine(zonstoryparser::kAction, WithoutBlanks(line.substr(1)));
    default:
        WarnOfHeading(line);
        AddLine(zonstoryparser::kAction, WithoutTrailingBlanks(mLine.text));
    }
}

void FountainParser::WarnOfHeading(std::string_view line) {
    if (!mIsAfterEmpty && IsHeadingInCapitals(line)) {
        mBuilder.Warn(WarningKind::Assumed, mLine.number,
                      mIsSpeech ? "reads like a scene heading, but is part of the speech above it"
                                : "reads like a scene heading, but no empty line stands before it; it is action");
    }
}

void FountainParser::Add(zonstoryparser::ElementType kind, std::string_view text) {
    mPlain.clear();
    AppendPlainText(text, mPlain);
    mBuilder.AddParagraph(kind, mPlain, mLine.number);
}

// Lines without text count where others follow: on Fountain's side they are of two blanks or a mark alone.
void FountainParser::AddLine(zonstoryparser::ElementType kind, std::string_view text) {
    mPlain.clear();
    AppendPlainText(text, mPlain);
    if (mPlain.empty()) {
        mGap += mParagraph.empty() ? 0 : 1;
        return;
    }
    if (mParagraph.empty()) {
        mKind = kind;
        mParagraphLine = mLine.number;
    } else {
        mParagraph.append(mGap + 1, '\n');
    }
    mGap = 0;
    mParagraph.append(mPlain);
}

void FountainParser::Flush() {
    if (!mParagraph.empty()) {
        mBuilder.AddParagraph(mKind, mParagraph, mParagraphLine);
    }
    mParagraph.clear();
    mGap = 0;
}

} // namespace zonscreenplay::fountain

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fountain/Lines.h"
#include "source/ScriptBuilder.h"

namespace zonscreenplay::fountain {

/// Tells of each line, by itself and by what stands around it, what it is, and joins lines to paragraphs.
class FountainParser {
public:
    /// @param text  As LineReader takes it; all three outlive the parser.
    FountainParser(std::string& text, const ReadOptions& options, ScriptBuilder& builder);

    /// @throws ReadError
    void Parse();

private:
    void Advance();
    void ReadTitlePage();
    void ReadLine();
    void EndParagraphs();
    bool ReadStructure(std::string_view line);

    bool ReadElement(std::string_view line);
    bool ReadHeading(std::string_view line);
    bool ReadTransition(std::string_view line);
    bool ReadCue(std::string_view line);
    void BeginScene(std::string_view heading);

    void ReadSpeech(std::string_view line);
    void ReadAction(std::string_view line);
    void WarnOfHeading(std::string_view line);

    void Add(zonstoryparser::ElementType kind, std::string_view text);
    void AddLine(zonstoryparser::ElementType kind, std::string_view text);
    void Flush();

    const ReadOptions& mOptions;
    ScriptBuilder& mBuilder;
    LineReader mReader;
    Line mLine;
    Line mNext;
    bool mHasLine = false;
    bool mHasNext = false;
    bool mIsAfterEmpty = true; // or at the start, or after what no reader of the script sees
    bool mIsSpeech = false;
    std::string mParagraph; // not delivered yet
    std::string mPlain;     // kept from one to the next: nothing is allocated anew
    zonstoryparser::ElementType mKind = zonstoryparser::kAction;
    std::size_t mParagraphLine = 0;
    std::size_t mGap = 0; // lines without text since its last line
};

} // namespace zonscreenplay::fountain

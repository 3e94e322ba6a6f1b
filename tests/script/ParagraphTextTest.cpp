#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::MakeParagraph;

TEST(ParagraphText, JoinsRunsAndMarksParagraphBoundaries) {
    UString text;
    GetTextRuns(MakeParagraph(kAction, {}), text);
    EXPECT_EQ(text, u"");
    const auto paragraph = MakeParagraph(kAction, {u"JOHN", u"", u" ENTERS"});
    paragraph->textRuns[1].reset();
    GetTextRuns(paragraph, text);
    EXPECT_EQ(text, u"JOHN ENTERS");
    GetTextRuns(MakeParagraph(kAction, {u" Nothing. "}), text);
    GetTextRuns(MakeParagraph(kAction, {}), text);
    EXPECT_EQ(text, u"JOHN ENTERS   Nothing.   ");
}

} // namespace

#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::MakeParagraph;

TEST(ParagraphText, JoinsRunsAndMarksParagraphBoundaries) {
    const auto paragraph = MakeParagraph(kAction, {u"JOHN", u"", u" ENTERS"});
    paragraph->textRuns[1].reset();
    UString text;
    for (const auto& next :
         {MakeParagraph(kAction, {}), paragraph, MakeParagraph(kAction, {u" Nothing. "}), MakeParagraph(kAction, {})}) {
        GetTextRuns(next, text);
    }
    EXPECT_EQ(text, u"JOHN ENTERS   Nothing.   ");
}

} // namespace

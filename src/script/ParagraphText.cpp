#include <zonstoryparser/Story.h>

namespace zonstoryparser {

// On purpose: the separator comes even in front of a paragraph without text, so that two spaces always mark a paragraph
// boundary inside gathered text. Held by the tests SceneContent.
void GetTextRuns(boost::intrusive_ptr<Paragraph> paragraph, UString& text) {
    if (!text.empty()) {
        text += u"  ";
    }
    for (const boost::intrusive_ptr<TextRun>& run : paragraph->textRuns) {
        if (run) {
            text += run->text;
        }
    }
}

} // namespace zonstoryparser

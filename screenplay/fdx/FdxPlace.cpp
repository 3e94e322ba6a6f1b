#include "fdx/FdxPlace.h"

#include <algorithm>
#include <iterator>

namespace zonscreenplay {

namespace {

struct Step {
    FdxPlace from;
    std::u16string_view element;
    FdxPlace to;
};

// The elements that a file has most of come first.
constexpr Step kSteps[] = {
    {FdxPlace::Script, u"Paragraph", FdxPlace::Paragraph},
    {FdxPlace::Paragraph, u"Text", FdxPlace::Run},
    {FdxPlace::Paragraph, u"SceneProperties", FdxPlace::Properties},
    {FdxPlace::Paragraph, u"ScriptNote", FdxPlace::Note},
    {FdxPlace::Paragraph, u"DualDialogue", FdxPlace::Dual},
    {FdxPlace::Paragraph, u"OmittedScene", FdxPlace::Omission},
    {FdxPlace::Script, u"DualDialogue", FdxPlace::Dual},
    {FdxPlace::Script, u"OmittedScene", FdxPlace::OmittedScene},
    {FdxPlace::Dual, u"Paragraph", FdxPlace::Paragraph},
    {FdxPlace::OmittedScene, u"Paragraph", FdxPlace::OmittedParagraph},
    {FdxPlace::OmittedParagraph, u"SceneProperties", FdxPlace::Properties},
    {FdxPlace::Notes, u"ScriptNote", FdxPlace::Note},
    {FdxPlace::Note, u"Paragraph", FdxPlace::NoteParagraph},
    {FdxPlace::NoteParagraph, u"Text", FdxPlace::NoteRun},
    {FdxPlace::TitlePage, u"Content", FdxPlace::TitleText},
    {FdxPlace::TitleText, u"Paragraph", FdxPlace::TitleParagraph},
    {FdxPlace::TitleParagraph, u"Text", FdxPlace::TitleRun},
    {FdxPlace::Revisions, u"Revision", FdxPlace::Revision},
    {FdxPlace::Root, u"Content", FdxPlace::Script},
    {FdxPlace::Root, u"ScriptNotes", FdxPlace::Notes},
    {FdxPlace::Root, u"TitlePage", FdxPlace::TitlePage},
    {FdxPlace::Root, u"Revisions", FdxPlace::Revisions},
};

} // namespace

FdxPlace Enter(FdxPlace from, std::u16string_view element) {
    const auto* const step = std::find_if(std::begin(kSteps), std::end(kSteps), [&](const Step& candidate) {
        return candidate.from == from && candidate.element == element;
    });
    return step == std::end(kSteps) ? FdxPlace::Nowhere : step->to;
}

} // namespace zonscreenplay

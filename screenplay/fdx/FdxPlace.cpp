#include "fdx/FdxPlace.h"

#include <algorithm>
#include <iterator>

namespace zonscreenplay {

namespace {

struct Step {
    FdxPlace from;
    FdxPlace to;
    std::u16string_view element;
};

// The elements that a file has most of come first.
constexpr Step kSteps[] = {
    {FdxPlace::Script, FdxPlace::Paragraph, u"Paragraph"},
    {FdxPlace::Paragraph, FdxPlace::Run, u"Text"},
    {FdxPlace::Paragraph, FdxPlace::Properties, u"SceneProperties"},
    {FdxPlace::Paragraph, FdxPlace::Note, u"ScriptNote"},
    {FdxPlace::Paragraph, FdxPlace::Dual, u"DualDialogue"},
    {FdxPlace::Paragraph, FdxPlace::Omission, u"OmittedScene"},
    {FdxPlace::Script, FdxPlace::Dual, u"DualDialogue"},
    {FdxPlace::Script, FdxPlace::OmittedScene, u"OmittedScene"},
    {FdxPlace::Dual, FdxPlace::Paragraph, u"Paragraph"},
    {FdxPlace::OmittedScene, FdxPlace::OmittedParagraph, u"Paragraph"},
    {FdxPlace::OmittedParagraph, FdxPlace::Properties, u"SceneProperties"},
    {FdxPlace::Notes, FdxPlace::Note, u"ScriptNote"},
    {FdxPlace::Note, FdxPlace::NoteParagraph, u"Paragraph"},
    {FdxPlace::NoteParagraph, FdxPlace::NoteRun, u"Text"},
    {FdxPlace::TitlePage, FdxPlace::TitleText, u"Content"},
    {FdxPlace::TitleText, FdxPlace::TitleParagraph, u"Paragraph"},
    {FdxPlace::TitleParagraph, FdxPlace::TitleRun, u"Text"},
    {FdxPlace::Revisions, FdxPlace::Revision, u"Revision"},
    {FdxPlace::Root, FdxPlace::Script, u"Content"},
    {FdxPlace::Root, FdxPlace::Notes, u"ScriptNotes"},
    {FdxPlace::Root, FdxPlace::TitlePage, u"TitlePage"},
    {FdxPlace::Root, FdxPlace::Revisions, u"Revisions"},
};

} // namespace

FdxPlace Enter(FdxPlace from, std::u16string_view element) {
    const auto* const step = std::find_if(std::begin(kSteps), std::end(kSteps), [&](const Step& candidate) {
        return candidate.from == from && candidate.element == element;
    });
    return step == std::end(kSteps) ? FdxPlace::Nowhere : step->to;
}

} // namespace zonscreenplay

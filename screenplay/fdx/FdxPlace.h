#pragma once

#include <string_view>

namespace zonscreenplay {

/// Where in the file an element stands, as far as that decides what is made of it.
enum class FdxPlace {
    Nowhere, ///< What stands within is passed over.
    Root,
    Script,
    Paragraph, ///< Of the script or of dual dialogue.
    Run,
    Properties,
    Dual,
    Omission,         ///< Within the heading that says OMITTED: what was there.
    OmittedScene,     ///< Between paragraphs: a scene with its old text.
    OmittedParagraph, ///< Of such a scene.
    Notes,
    Note,
    NoteParagraph,
    NoteRun,
    TitlePage,
    TitleText,
    TitleParagraph,
    TitleRun,
    Revisions,
    Revision,
};

/// The place of an element in another. Only direct children count, so that text within notes, summaries, beats and
/// alternates never becomes the script's.
FdxPlace Enter(FdxPlace from, std::u16string_view element);

} // namespace zonscreenplay

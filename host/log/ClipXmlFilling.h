#pragma once

#include <span>
#include <string>
#include <vector>

#include "log/ClipXml.h"
#include "log/Filling.h"

namespace zonstory {

/// What a clip of FCPXML is to say; what is empty changes nothing.
struct XmlClipWords {
    std::string scene;
    std::string take;
    std::string note;
    std::vector<std::string> keywords; ///< Those that the clip has not got yet are added.
};

/// The names of the columns that CellChange::column counts: scene, take, note, keywords.
inline constexpr const char* kXmlColumns[] = {"scene", "take", "note", "keywords"};

/// Finds the edits that fill clips: `md` elements of their metadata, their notes and keywords, each in the place that the
/// format's order of elements gives it. All other bytes stay.
/// @param words  One for each clip.
Filling FillClipXml(const ClipXml& xml, std::span<const XmlClipWords> words, bool replace);

} // namespace zonstory

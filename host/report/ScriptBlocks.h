#pragma once

#include <unordered_set>

#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/StoryModel.h>

#include "output/Json.h"

namespace zonstory {

/// Cues whose speeches are spoken at once with the next or the one before.
using DualCues = std::unordered_set<const zonstoryparser::Paragraph*>;
DualCues DualCuesOf(const zonscreenplay::Screenplay& story);

/// A scene's paragraphs as a reader of screenplays knows them: a cue and what is said under it are one block. Without the
/// heading that counts, which the page shows itself.
Json ScriptBlocks(const zonstoryparser::Scene& scene, const DualCues& dualCues);

} // namespace zonstory

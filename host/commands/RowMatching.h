#pragma once

#include <string>
#include <vector>

#include "commands/SceneMatching.h"

namespace zonstory {

/// Which scene each row of logs is about.
struct RowMatches {
    std::vector<std::vector<Decision>> decisions; ///< For each log, one for each of its rows.
    std::vector<std::string> patterns;            ///< As in ClipMatches.
};

/// Decides as MatchClips() does, rows standing for clips: what a row says of its scene is what a log says, other logs may
/// speak of the row's clip, and names of files and of clips are read, each kind for itself. Numbers in a column of clips
/// are no names. What is not clear, or cannot be read, is a warning.
/// @param clips  The clips that rows are about, as far as they are at hand: they are asked as well.
/// @throws CsvError when one of the other logs cannot be read.
RowMatches MatchRows(const SceneNumbers& story, const std::vector<const ClipLog*>& logs,
                     const std::vector<SelectedClip>& clips, const MatchSettings& settings, const ClipOptions& options,
                     Output& output);

/// What the row calls its clip: a file with its folder, a clip's name, a sound file; empty where it says none of them.
std::string ClipOfRow(const ClipLog& log, const ClipLog::Row& row);

} // namespace zonstory

#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/ClipSelection.h"
#include "match/ClipLog.h"
#include "match/Decision.h"
#include "match/GivenPattern.h"
#include "match/LogColumns.h"
#include "output/Output.h"
#include "story/SceneSelection.h"

namespace zonstory {

/// How clips are matched to scenes; what `match` and `write --match` have in common.
struct MatchSettings {
    std::vector<std::string> logs;       ///< Files.
    GivenColumns columns;                ///< Names of theirs that nobody here knows.
    std::optional<GivenPattern> pattern; ///< Of the clips' names, where the user says it.
    SlateStyle slates = SlateStyle::Scene;
    Confidence bar = Confidence::Medium;
};

struct ClipMatch {
    SelectedClip clip;
    Decision decision; ///< Of no meaning for a clip that is refused.
    /// What logs say of the clip, all columns: a row's file and line, then each column's name and field.
    std::vector<std::vector<std::pair<std::string, std::string>>> logRows;

    bool IsSettled() const { return clip.refusal.empty() && decision.scene.has_value(); }
};

struct ClipMatches {
    SceneNumbers story;
    std::vector<ClipMatch> clips;
    std::vector<std::string> patterns; ///< "41 names like 12A-3: scene, set-up, take".
};

/// The numbers of a story's scenes, in its order.
SceneNumbers NumbersOf(const SceneSelection& scenes);

/// The logs that the settings name.
/// @throws CsvError
std::vector<ClipLog> ReadLogFiles(const MatchSettings& settings);

/// What the clips themselves say, one for one, beside their names. What cannot be read is a warning.
std::vector<std::vector<Statement>> GatherClipStatements(const std::vector<SelectedClip>& clips,
                                                         const ClipOptions& options, Output& output);

/// Paths as logs may have them, in full.
std::vector<std::string> AbsolutePaths(const std::vector<SelectedClip>& clips);

/// Finds each clip's scene; writes nothing. What cannot be read or is not clear in the logs is a warning.
/// @throws CsvError when a log cannot be read.
ClipMatches MatchClips(const SceneSelection& scenes, std::vector<SelectedClip> clips, const MatchSettings& settings,
                       const ClipOptions& options, Output& output);

/// "12 matched, 1 ambiguous, 3 unmatched, 0 failed".
std::string Summary(const ClipMatches& matches);

/// An ExitCode: failed clips count before unmatched ones.
int ExitCodeOf(const ClipMatches& matches);

} // namespace zonstory

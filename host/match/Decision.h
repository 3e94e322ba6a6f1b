#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "match/SceneNumbers.h"
#include "match/Slate.h"

namespace zonstory {

/// Where a statement about a clip's scene comes from, strongest first.
enum class Source { Log, IXml, Xmp, FileName, FolderName };

/// "log", "iXML", "XMP", "file name", "folder name". Written to reports: they do not change.
std::string_view Name(Source source);

/// What one source says of a clip.
struct Statement {
    Source source = Source::FileName;
    std::string text;                         ///< What was read: "12A-3.mov".
    std::string where;                        ///< Where it stands, "day3.csv:12"; empty where the clip says it all.
    std::string take;                         ///< From a field of its own; wins over the readings' take.
    std::vector<SlateReading> readings;       ///< Of that text.
    Confidence ceiling = Confidence::Certain; ///< No surer than this, however plain the text.
};

/// What a field for a scene number says: of metadata, at most of High confidence.
/// @param source  IXml or Xmp; of a log, what it found the clip by tells how sure it is.
/// @param take    The field beside it; may be empty.
Statement StateField(Source source, std::string_view scene, std::string_view take);

/// What the name of a file or a folder says.
Statement StateName(Source source, std::string_view name, std::vector<SlateReading> readings);

/// One statement held against the story.
struct Evidence {
    Source source = Source::FileName;
    std::string text;
    std::string where;
    std::string said;  ///< The number as read, set-up letters on: "12A". Empty where nothing was.
    std::string take;  ///< Empty where none was given.
    std::string setUp; ///< What was stripped.
    SlateRule rule = SlateRule::AmongWords;
    SceneNumbers::Fit fit = SceneNumbers::Fit::None;
    Confidence confidence = Confidence::None;
    std::vector<std::size_t> scenes; ///< That fit, in the story's order: none, one, or those it leaves open.
    std::string unknown;             ///< A number that it names beside them and the story does not have.
};

enum class Verdict {
    Matched,
    Ambiguous, ///< More than one scene fits, or sources of equal strength disagree.
    Unmatched, ///< Nothing fits, or nothing that is sure enough.
};

/// "matched", "ambiguous", "unmatched". Written to reports: they do not change.
std::string_view Name(Verdict verdict);

struct Decision {
    Verdict verdict = Verdict::Unmatched;
    std::optional<std::size_t> scene;  ///< Its place in the story; only when matched.
    std::string take;                  ///< By the strongest source that agrees on the scene and names one.
    std::vector<std::size_t> between;  ///< The scenes that an ambiguous clip may show.
    std::optional<Evidence> evidence;  ///< What decided, or comes nearest to it.
    std::vector<Evidence> disagreeing; ///< Other sources that name another scene.
    std::string reason;                ///< Why there is no answer, in words; empty when matched.
};

/// Decides which scene a clip shows.
///
/// The strongest source that says anything decides. There is no answer when it leaves two scenes open, when another of its
/// strength says otherwise, when what it says is no scene of the story, when a weaker source is surer and says otherwise,
/// or when it is less sure than `bar`. A source that is only of Low confidence is passed over where a weaker one is surer.
/// @param statements  In any order; several of one source are of equal strength.
Decision Decide(const std::vector<Statement>& statements, const SceneNumbers& story, Confidence bar);

/// One line: `file name "12A-3.mov": a lettered number and a take; 12A is scene 12, set-up A`.
std::string Explain(const Evidence& evidence, const SceneNumbers& story);

/// "12", or "#7" for the seventh scene of a story that gives it no number, with its place where the number is repeated.
std::string SceneLabel(std::size_t scene, const SceneNumbers& story);

} // namespace zonstory

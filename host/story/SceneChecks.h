#pragma once

#include <functional>
#include <string>

#include <zonstoryparser/StoryModel.h>

#include "story/Finding.h"
#include <zonscreenplay/SourceLines.h>

/// What is checked in one scene by itself. Each check says what it finds through `report`.
namespace zonstory {

using ReportFinding = std::function<void(std::size_t line, FindingKind kind, std::string message)>;

/// The setting and the time of day of the heading that counts, the last.
void CheckHeading(const zonstoryparser::Scene& scene, const zonscreenplay::SourceLines& lines,
                  const ReportFinding& report);

/// Cues that nobody speaks under, and dialogue under no cue.
void CheckDialogue(const zonstoryparser::Scene& scene, const zonscreenplay::SourceLines& lines,
                   const ReportFinding& report);

/// The duration of the heading that counts.
void CheckDuration(const zonstoryparser::Scene& scene, const zonscreenplay::SourceLines& lines,
                   const ReportFinding& report);

} // namespace zonstory

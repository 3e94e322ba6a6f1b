#pragma once

#include <filesystem>
#include <vector>

#include "commands/ClipBatch.h"
#include "commands/ClipRecord.h"
#include "output/Json.h"

namespace zonstory {

/// The word for what became of a clip: "written", "unchanged", "would be written", "failed", "unmatched",
/// "skipped", "not done".
std::string ResultWord(ClipResult result, const BatchWords& words);

/// Whether a report can be written under this name: it ends in .json or .csv.
bool IsReportName(const std::filesystem::path& path);

/// Writes the report of a batch, JSON or CSV after the name's ending, whole or not at all.
/// @throws OutputError
void WriteClipReport(const std::filesystem::path& path, const std::vector<ClipRecord>& records,
                     const BatchWords& words);

/// The JSON Schema of that report.
Json ReportSchema();

} // namespace zonstory

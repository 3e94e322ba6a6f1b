#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "commands/ClipBatch.h"
#include "commands/ClipRecord.h"
#include "files/GrowingFile.h"
#include "output/Json.h"

namespace zonstory {

/// The word for what became of a clip: "written", "unchanged", "would be written", "failed", "unmatched",
/// "skipped", "not done".
std::string ResultWord(ClipResult result, const BatchWords& words);

/// Whether a report can be written under this name: it ends in .json or .csv.
bool IsReportName(const std::filesystem::path& path);

/// The report of a batch, JSON or CSV after the name's ending. It is there before the first clip, and after each it is
/// whole: whatever ends the run, it tells what was done until then.
class ClipReport {
public:
    /// @param path  Empty for no report.
    /// @throws OutputError
    ClipReport(const std::filesystem::path& path, const BatchWords& words);

    /// A failure is told by Finish(): it stops no work on clips.
    void Add(const ClipRecord& record);
    /// @throws OutputError
    void Finish();

private:
    const BatchWords& mWords;
    bool mIsJson;
    std::string mBehind; ///< What ends the file.
    bool mIsFirst = true;
    std::unique_ptr<GrowingFile> mFile; ///< Null for no report.
};

/// The JSON Schema of that report.
Json ReportSchema();

} // namespace zonstory

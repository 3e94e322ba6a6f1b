#include "commands/ClipReport.h"

#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include "files/AtomicFile.h"
#include "output/Json.h"
#include "output/Table.h"

namespace zonstory {

namespace {

const char* TargetWord(const ClipRecord& record) {
    if (record.file.empty()) {
        return "";
    }
    return record.target == Target::Inside ? "inside" : "sidecar";
}

std::string AsJson(const std::vector<ClipRecord>& records, const BatchWords& words) {
    Json rows = Json::array();
    for (const ClipRecord& record : records) {
        rows.push_back({{"clip", JsonString(record.clip.string())},
                        {"scene", JsonString(record.scene)},
                        {"target", TargetWord(record)},
                        {"file", JsonString(record.file.string())},
                        {"result", ResultWord(record.result, words)},
                        {"reason", JsonString(record.reason)},
                        {"notes", record.notes},
                        {"changedPaths", record.changedPaths}});
    }
    Json document = JsonDocument("report", 1);
    document["clips"] = std::move(rows);
    return JsonText(document);
}

std::string AsCsv(const std::vector<ClipRecord>& records, const BatchWords& words) {
    Table table({{"clip", ""},
                 {"scene", ""},
                 {"target", ""},
                 {"file", ""},
                 {"result", ""},
                 {"reason", ""},
                 {"notes", ""},
                 {"changed_paths", ""}});
    for (const ClipRecord& record : records) {
        table.AddRow({record.clip.string(), record.scene, TargetWord(record), record.file.string(),
                      ResultWord(record.result, words), record.reason, fmt::format("{}", fmt::join(record.notes, "; ")),
                      fmt::format("{}", fmt::join(record.changedPaths, " "))});
    }
    return table.AsCsv();
}

} // namespace

std::string ResultWord(ClipResult result, const BatchWords& words) {
    switch (result) {
    case ClipResult::Done:
        return words.done;
    case ClipResult::Unchanged:
        return "unchanged";
    case ClipResult::Would:
        return words.would;
    case ClipResult::Failed:
        return "failed";
    case ClipResult::Unmatched:
        return "unmatched";
    case ClipResult::NotDone:
        break;
    }
    return "not done";
}

bool IsReportName(const std::filesystem::path& path) {
    return path.extension() == ".json" || path.extension() == ".csv";
}

void WriteClipReport(const std::filesystem::path& path, const std::vector<ClipRecord>& records,
                     const BatchWords& words) {
    WriteFileAtomically(path, path.extension() == ".json" ? AsJson(records, words) : AsCsv(records, words));
}

} // namespace zonstory

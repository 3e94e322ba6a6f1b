#include "commands/ClipReport.h"

#include "commands/TargetWord.h"
#include "files/AtomicFile.h"
#include "output/Record.h"

namespace zonstory {

namespace {

struct ReportRow {
    std::string clip;
    std::string scene;
    std::string target;
    std::string file;
    std::string result;
    std::string reason;
    std::vector<std::string> notes;
    std::vector<std::string> changedPaths;
};

struct ReportDocument {
    std::vector<ReportRow> clips;
};

const char* TargetOf(const ClipRecord& record) {
    return record.file.empty() ? "" : TargetWord(record.target);
}

ReportDocument DocumentOf(const std::vector<ClipRecord>& records, const BatchWords& words) {
    ReportDocument document;
    for (const ClipRecord& record : records) {
        document.clips.push_back({record.clip.string(), record.scene, TargetOf(record), record.file.string(),
                                  ResultWord(record.result, record.words ? *record.words : words), record.reason,
                                  record.notes, record.changedPaths});
    }
    return document;
}

} // namespace

template <>
const Fields<ReportRow>& FieldsOf<ReportRow>() {
    static const Fields<ReportRow> fields = {
        {"clip", nullptr, &ReportRow::clip},
        {"scene", nullptr, &ReportRow::scene},
        {"target", nullptr, &ReportRow::target},
        {"file", nullptr, &ReportRow::file},
        {"result", nullptr, &ReportRow::result},
        {"reason", nullptr, &ReportRow::reason},
        {"notes", nullptr, &ReportRow::notes, Shown::Everywhere, "; "},
        {"changedPaths", nullptr, &ReportRow::changedPaths, Shown::Everywhere, " "},
    };
    return fields;
}

template <>
const Fields<ReportDocument>& FieldsOf<ReportDocument>() {
    static const Fields<ReportDocument> fields = {{"clips", nullptr, &ReportDocument::clips}};
    return fields;
}

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
    case ClipResult::Skipped:
        return "skipped";
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
    const ReportDocument document = DocumentOf(records, words);
    WriteFileAtomically(path, path.extension() == ".json" ? DocumentText("report", document)
                                                          : RecordTable(document.clips).AsCsv());
}

Json ReportSchema() {
    return DocumentSchema<ReportDocument>("report");
}

} // namespace zonstory

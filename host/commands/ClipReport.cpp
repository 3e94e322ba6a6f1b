#include "commands/ClipReport.h"

#include <utility>

#include "commands/TargetWord.h"
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

ReportRow RowOf(const ClipRecord& record, const BatchWords& words) {
    return {record.clip.string(),
            record.scene,
            TargetOf(record),
            record.file.string(),
            ResultWord(record.result, record.words ? *record.words : words),
            record.reason,
            record.notes,
            record.changedPaths};
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

namespace {

std::string CsvHeader() {
    return RecordTable(std::vector<ReportRow>()).AsCsv();
}

// A report without rows, parted where they go.
std::pair<std::string, std::string> AroundRows(bool isJson) {
    const std::string text = isJson ? DocumentText("report", ReportDocument()) : CsvHeader();
    const std::size_t end = isJson ? text.rfind(']') : text.size();
    return {text.substr(0, end), text.substr(end)};
}

// As an item of the document's list, indented as it is there.
std::string JsonRow(const ReportRow& row) {
    std::string text = JsonText(RecordJson(row));
    text.pop_back();
    std::string indented = "\n    ";
    for (const char character : text) {
        indented += character;
        indented += character == '\n' ? "    " : "";
    }
    return indented;
}

std::string CsvRow(const ReportRow& row) {
    return RecordTable(std::vector<ReportRow>{row}).AsCsv().substr(CsvHeader().size());
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

ClipReport::ClipReport(const std::filesystem::path& path, const BatchWords& words)
    : mWords(words), mIsJson(path.extension() == ".json") {
    if (!path.empty()) {
        const auto [before, behind] = AroundRows(mIsJson);
        mFile = std::make_unique<GrowingFile>(path, before, behind);
        mBehind = mIsJson ? "\n  " + behind : behind; // with rows, on a line of its own
    }
}

void ClipReport::Add(const ClipRecord& record) {
    if (mFile) {
        const ReportRow row = RowOf(record, mWords);
        const char* const comma = std::exchange(mIsFirst, false) ? "" : ",";
        mFile->Add(mIsJson ? comma + JsonRow(row) : CsvRow(row), mBehind);
    }
}

void ClipReport::Finish() {
    if (mFile) {
        mFile->Finish();
    }
}

Json ReportSchema() {
    return DocumentSchema<ReportDocument>("report");
}

} // namespace zonstory

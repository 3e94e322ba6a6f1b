#include "match/ClipLog.h"

#include <utility>

#include "output/CsvReader.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr int kEnough = 100; ///< More than there are kinds of columns.

int CountKnown(const LogColumns& columns) {
    int known = columns.scene || columns.slate ? 1 : 0;
    for (const auto& column : {columns.file, columns.clip, columns.sound, columns.reel}) {
        known += column ? 1 : 0;
    }
    return known == 0 ? 0 : known + (columns.take ? 1 : 0) + (columns.number ? 1 : 0);
}

[[noreturn]] void FailWithout(const std::string& columns, const std::string& name, const LogSheet& sheet) {
    std::string found;
    for (const LogCell& title : sheet.header.cells) {
        found += (found.empty() ? "; found are " : ", ") + title.text;
    }
    const std::string reason = sheet.isAle || sheet.hasHeader ? "has no " : "no header names a ";
    throw CsvError(name, sheet.isAle || sheet.hasHeader ? 0 : 1,
                   reason + columns + found + (found.empty() ? "" : ", which --columns can name (clip=…,scene=…)"));
}

} // namespace

std::string_view ClipLog::Field(const Row& row, std::optional<std::size_t> column) const {
    return column && *column < row.fields.size() ? WithoutBlanks(row.fields[*column]) : std::string_view();
}

std::string ClipLog::Where(const Row& row) const {
    return name + ":" + std::to_string(row.line);
}

ClipLog ReadClipLog(std::string_view bytes, const std::string& name, const GivenColumns& given) {
    LogSheet sheet = ReadLogSheet(bytes, name, [&given](const std::vector<std::string>& titles) {
        return FindLogColumns(titles, given).AreEnough() ? kEnough : 0;
    });
    if (!sheet.hasHeader || !FindLogColumns(TextsOf(sheet.header), given).AreEnough()) {
        FailWithout("scene column and a clip column", name, sheet);
    }
    return MakeClipLog(std::move(sheet), name, given);
}

LogSheet ReadSheetOfClips(std::string_view bytes, const std::string& name, const GivenColumns& given) {
    const auto rate = [&given](const std::vector<std::string>& titles) {
        const LogColumns columns = FindLogColumns(titles, given);
        return columns.AreEnough() ? kEnough : CountKnown(columns);
    };
    LogSheet sheet = ReadLogSheet(bytes, name, rate);
    if (!sheet.hasHeader || rate(TextsOf(sheet.header)) == 0) {
        FailWithout("clip column or a scene column", name, sheet);
    }
    return sheet;
}

ClipLog MakeClipLog(LogSheet sheet, const std::string& name, const GivenColumns& given) {
    ClipLog log;
    log.name = name;
    log.columns = TextsOf(sheet.header);
    log.known = FindLogColumns(log.columns, given);
    log.rows.reserve(sheet.rows.size());
    for (LogLine& line : sheet.rows) {
        ClipLog::Row row = {line.line, {}};
        row.fields.reserve(line.cells.size());
        for (LogCell& cell : line.cells) {
            row.fields.push_back(std::move(cell.text));
        }
        log.rows.push_back(std::move(row));
    }
    return log;
}

} // namespace zonstory

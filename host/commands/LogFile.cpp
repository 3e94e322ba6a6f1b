#include "commands/LogFile.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "files/FileError.h"
#include "files/ReadFile.h"
#include "log/ClipXmlFilling.h"
#include "log/SheetFilling.h"
#include "output/CsvReader.h"

namespace zonstory {

namespace {

std::string ReadBytes(const std::string& path) try { return ReadFile(path); } catch (const FileError& error) {
    throw CsvError(path, 0, error.what());
}

// An FCPXML file as matching takes it: a clip a row.
ClipLog RowsOf(const ClipXml& xml, const std::string& name) {
    ClipLog log;
    log.name = name;
    log.columns = {"File", "Clip", "Scene", "Take"};
    log.known = FindLogColumns(log.columns);
    log.rows.reserve(xml.clips.size());
    for (const XmlClip& clip : xml.clips) {
        const std::string scene = clip.scene ? clip.scene->text : "";
        const std::string take = clip.take ? clip.take->text : "";
        log.rows.push_back(
            {clip.line,
             {clip.file, clip.name, scene.empty() ? clip.assetScene : scene, take.empty() ? clip.assetTake : take}});
    }
    return log;
}

const LogFill* FindFill(const std::vector<LogFill>& fills, LogField field) {
    const auto found =
        std::find_if(fills.begin(), fills.end(), [field](const LogFill& fill) { return fill.field == field; });
    return found == fills.end() ? nullptr : &*found;
}

std::string NoteOf(std::size_t row, const std::vector<LogFill>& fills, const RowWords& words) {
    std::string note;
    for (const LogField field : {LogField::Description, LogField::Actions, LogField::Dialogue, LogField::Comments}) {
        const std::string text = FindFill(fills, field) != nullptr ? words.text(row, field, "") : "";
        note += (note.empty() || text.empty() ? "" : " / ") + text;
    }
    return note;
}

XmlClipWords WordsOf(std::size_t row, const XmlClip& clip, const std::vector<LogFill>& fills, const RowWords& words) {
    const auto text = [&](LogField field, const std::optional<XmlClip::Datum>& datum) {
        return FindFill(fills, field) == nullptr ? "" : words.text(row, field, datum ? datum->text : "");
    };
    XmlClipWords said = {
        text(LogField::Scene, clip.scene), text(LogField::Take, clip.take), NoteOf(row, fills, words), {}};
    for (const LogFill& fill : fills) {
        const std::vector<std::string> keywords = words.keywords(row, fill.field);
        said.keywords.insert(said.keywords.end(), keywords.begin(), keywords.end());
    }
    return said;
}

Filling FillClips(const ClipXml& xml, const std::vector<LogFill>& fills, const RowWords& words, bool replace) {
    std::vector<XmlClipWords> all;
    all.reserve(xml.clips.size());
    for (std::size_t row = 0; row < xml.clips.size(); ++row) {
        all.push_back(WordsOf(row, xml.clips[row], fills, words));
    }
    return FillClipXml(xml, all, replace);
}

} // namespace

LogFile::LogFile(std::string path, const GivenColumns& columns) : mPath(std::move(path)), mBytes(ReadBytes(mPath)) {
    if (IsXml(mBytes)) {
        ClipXml xml = ReadClipXml(mBytes, mPath);
        mRows = RowsOf(xml, mPath);
        mContent = std::move(xml);
    } else {
        LogSheet sheet = ReadSheetOfClips(mBytes, mPath, columns);
        mRows = MakeClipLog(sheet, mPath, columns);
        mContent = std::move(sheet);
    }
}

Filling LogFile::Fill(const std::vector<LogFill>& fills, const RowWords& words, bool replace) const {
    const auto* const sheet = std::get_if<LogSheet>(&mContent);
    return sheet != nullptr ? FillRows(*sheet, fills, words, replace)
                            : FillClips(std::get<ClipXml>(mContent), fills, words, replace);
}

Filling LogFile::FillRows(const LogSheet& sheet, const std::vector<LogFill>& fills, const RowWords& words,
                          bool replace) const {
    std::vector<SheetColumn> columns;
    columns.reserve(fills.size());
    for (const LogFill& fill : fills) {
        columns.push_back({TitleOf(fill), FindColumnOf(fill, mRows)});
        const auto isSame = [&](const SheetColumn& column) {
            return column.at == columns.back().at && (column.at || column.title == columns.back().title);
        };
        if (std::find_if(columns.begin(), columns.end(), isSame) != columns.end() - 1) {
            throw CsvError(mPath, sheet.header.line, fmt::format("two things have the column {}", TitleOf(fill)));
        }
    }
    std::vector<std::vector<std::string>> values;
    values.reserve(mRows.rows.size());
    for (std::size_t row = 0; row < mRows.rows.size(); ++row) {
        std::vector<std::string>& said = values.emplace_back();
        said.reserve(fills.size());
        for (std::size_t column = 0; column < fills.size(); ++column) {
            said.push_back(words.text(row, fills[column].field, mRows.Field(mRows.rows[row], columns[column].at)));
        }
    }
    return FillSheet(sheet, columns, values, replace);
}

std::vector<std::string> LogFile::ColumnNames(const std::vector<LogFill>& fills) const {
    if (std::holds_alternative<ClipXml>(mContent)) {
        return {std::begin(kXmlColumns), std::end(kXmlColumns)};
    }
    std::vector<std::string> names;
    names.reserve(fills.size());
    for (const LogFill& fill : fills) {
        const auto at = FindColumnOf(fill, mRows);
        names.push_back(at ? mRows.columns[*at] : TitleOf(fill));
    }
    return names;
}

} // namespace zonstory

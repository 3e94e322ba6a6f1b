// Arbitrary bytes as a log that is filled: what was not filled stays, and what was filled reads back.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Target.h"
#include "TextInvariants.h"
#include "log/ClipXmlFilling.h"
#include "log/OneLine.h"
#include "log/SheetFilling.h"
#include "match/ClipLog.h"
#include "output/CsvReader.h"
#include "text/ForeignText.h"

namespace {

using namespace zonstory;

constexpr char kName[] = "day:3.csv";
const std::string kValues[] = {
    "Rain", "a, \"b\";\t|c\r\n<&'>", "\xC3\x84\xE2\x82\xAC", "\xF0\x9F\x8E\xAC\x01 \x7F", "\"", " "};

// With the new bytes out and the old ones in, the file is what it was.
std::string Apply(std::string_view before, const std::vector<ByteEdit>& edits) {
    const std::string after = ApplyEdits(before, edits);
    std::string undone;
    std::size_t from = 0;
    std::size_t to = 0;
    for (const ByteEdit& edit : edits) {
        REQUIRE(edit.begin >= from && edit.end >= edit.begin && edit.end <= before.size());
        undone += after.substr(to, edit.begin - from);
        to += edit.begin - from;
        REQUIRE(after.substr(to, edit.bytes.size()) == edit.bytes);
        undone += before.substr(edit.begin, edit.end - edit.begin);
        to += edit.bytes.size();
        from = edit.end;
    }
    REQUIRE(undone + after.substr(to) == before);
    return after;
}

// Another reader of CSV finds the same cells.
void CheckCells(std::string_view bytes, const LogSheet& sheet) {
    const std::string text = ForeignToUTF8(bytes);
    std::string_view rest = text;
    for (std::size_t line = 1; line < sheet.header.line; ++line) {
        const std::size_t end = rest.find_first_of("\r\n");
        rest.remove_prefix(end + (rest.substr(end, 2) == "\r\n" ? 2 : 1));
    }
    const CsvContents contents = ParseCsvPart(rest, kName, sheet.delimiter, sheet.header.line);
    REQUIRE(contents.header.fields == TextsOf(sheet.header) && contents.rows.size() == sheet.rows.size());
    for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
        REQUIRE(contents.rows[row].fields == TextsOf(sheet.rows[row]) &&
                contents.rows[row].line == sheet.rows[row].line);
    }
}

void CheckSheet(std::string_view bytes, const std::string& value, bool replace) {
    const LogSheet sheet = ReadSheetOfClips(bytes, kName);
    if (!sheet.isAle) {
        CheckCells(bytes, sheet);
    }
    const std::vector<std::string> titles = TextsOf(sheet.header);
    std::vector<SheetColumn> columns = {{"Set", FindColumn("SET", titles)}, {"Action", FindColumn("ACTION", titles)}};
    std::vector<std::vector<std::string>> values(sheet.rows.size(), {"EXT", value});
    if (!values.empty()) {
        values.front().assign(2, ""); // a row that nothing is known of
    }
    const Filling filling = FillSheet(sheet, columns, values, replace);
    const std::string after = Apply(bytes, filling.edits);
    if (FindTextForm(after).encoding != FindTextForm(bytes).encoding) {
        REQUIRE(replace); // the texts that told the encoding are gone, and bytes that stayed may mean something else
        return;
    }

    const LogSheet filled = ReadSheetOfClips(after, kName);
    REQUIRE(filled.rows.size() == sheet.rows.size() && filled.header.cells.size() >= sheet.header.cells.size());
    for (std::size_t at = sheet.header.cells.size(); at < filled.header.cells.size(); ++at) {
        (columns[0].at || filled.header.cells[at].text != "Set" ? columns[1] : columns[0]).at = at;
    }
    std::vector<std::vector<std::string>> wanted;
    wanted.reserve(sheet.rows.size());
    for (const LogLine& row : sheet.rows) {
        wanted.push_back(TextsOf(row));
    }
    for (const CellChange& cell : filling.cells) {
        std::vector<std::string>& row = wanted[cell.row];
        const std::size_t at = columns[cell.column].at.value();
        if (cell.state == CellState::Filled || cell.state == CellState::Replaced) {
            row.resize(std::max(row.size(), at + 1));
            row[at] = cell.value;
        }
    }
    for (std::size_t row = 0; row < wanted.size(); ++row) {
        std::vector<std::string> texts = TextsOf(filled.rows[row]);
        wanted[row].resize(std::max(wanted[row].size(), texts.size()));
        texts.resize(wanted[row].size());
        REQUIRE(texts == wanted[row]);
    }
    REQUIRE(FillSheet(filled, columns, values, replace).edits.empty());
}

void CheckXml(std::string_view bytes, const std::string& value, bool replace) {
    const ClipXml xml = ReadClipXml(bytes, kName);
    const std::vector<XmlClipWords> words(xml.clips.size(), {"12A", value, value, {"EXT", value}});
    const std::string after = Apply(bytes, FillClipXml(xml, words, replace).edits);
    const ClipXml filled = ReadClipXml(after, kName);
    REQUIRE(filled.clips.size() == xml.clips.size() && FillClipXml(filled, words, replace).edits.empty());
    for (const XmlClip& clip : filled.clips) {
        REQUIRE(clip.scene && !OneLine(clip.scene->text).empty());
        REQUIRE(OneLine(value).empty() || (clip.note && !OneLine(clip.note->text).empty()));
    }
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    if (bytes.empty()) {
        return;
    }
    const auto choice = static_cast<unsigned char>(bytes.front());
    const std::string_view log = bytes.substr(1);
    try {
        (IsXml(log) ? CheckXml : CheckSheet)(log, kValues[choice / 2 % std::size(kValues)], choice % 2 == 1);
    } catch (const CsvError& error) {
        RequireErrorInFile(error.what(), kName, CountLines(ForeignToUTF8(log)));
    }
}

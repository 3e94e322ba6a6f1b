#include "output/Table.h"

#include <algorithm>
#include <utility>

#include "output/Csv.h"
#include "output/DisplayWidth.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

constexpr std::size_t kGap = 2;

struct Cell {
    std::string text;
    std::size_t width;
};
using Line = std::vector<Cell>;

template <typename Texts, typename TextOf>
Line MakeLine(const Texts& texts, TextOf textOf) {
    Line line;
    for (const auto& text : texts) {
        std::string safe = SafeLine(textOf(text));
        const std::size_t width = DisplayWidth(safe);
        line.push_back({std::move(safe), width});
    }
    return line;
}

std::vector<std::size_t> Widths(const std::vector<Line>& lines, std::size_t columnCount) {
    std::vector<std::size_t> widths(columnCount, 0);
    for (const Line& line : lines) {
        for (std::size_t column = 0; column < columnCount; ++column) {
            widths[column] = std::max(widths[column], line[column].width);
        }
    }
    return widths;
}

void AppendCell(const Cell& cell, Align align, std::size_t width, std::string& text) {
    const std::string filling(width - cell.width, ' ');
    text += align == Align::Right ? filling + cell.text : cell.text + filling;
}

} // namespace

std::string CsvName(std::string_view name) {
    std::string words;
    for (const char letter : name) {
        const bool isCapital = letter >= 'A' && letter <= 'Z';
        words.append(isCapital ? 1 : 0, '_').push_back(isCapital ? static_cast<char>(letter - 'A' + 'a') : letter);
    }
    return words;
}

Table::Table(std::vector<Column> columns) : mColumns(std::move(columns)) {}

void Table::AddRow(std::vector<std::string> cells) {
    cells.resize(mColumns.size());
    mRows.push_back(std::move(cells));
}

std::string Table::AsText() const {
    std::vector<Line> lines{MakeLine(mColumns, [](const Column& column) { return column.title; })};
    for (const auto& row : mRows) {
        lines.push_back(MakeLine(row, [](const std::string& cell) { return cell; }));
    }
    const std::vector<std::size_t> widths = Widths(lines, mColumns.size());
    std::string text;
    for (const Line& line : lines) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            text.append(column == 0 ? 0 : kGap, ' ');
            AppendCell(line[column], mColumns[column].align, widths[column], text);
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

std::string Table::AsCsv() const {
    std::vector<std::string> names;
    for (const Column& column : mColumns) {
        names.push_back(column.name);
    }
    std::string text = CsvRecord(names);
    for (const auto& row : mRows) {
        text += CsvRecord(row);
    }
    return text;
}

} // namespace zonstory

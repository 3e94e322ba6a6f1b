#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zonstory {

enum class Align { Left, Right };

/// The name of a column whose field is called so in JSON: "time_of_day" of "timeOfDay".
std::string CsvName(std::string_view name);

struct Column {
    std::string name;  ///< In CSV: one word.
    std::string title; ///< In text.
    Align align = Align::Left;
    bool isNumber = false; ///< Its cells are whole numbers, or empty.
};

/// Rows and columns, printed as aligned text or as CSV. Cells are UTF-8 of any content; file names may be any bytes.
class Table {
public:
    explicit Table(std::vector<Column> columns);

    /// @param cells  One for every column.
    void AddRow(std::vector<std::string> cells);

    /// A title line and a line for every row, columns aligned by display width and two blanks apart, nothing behind the
    /// last one. Cells are made safe for a terminal.
    std::string AsText() const;
    /// A line of names and a record for every row, as RFC 4180 has it. Cells are kept byte by byte.
    std::string AsCsv() const;

    const std::vector<Column>& Columns() const { return mColumns; }
    const std::vector<std::vector<std::string>>& Rows() const { return mRows; } ///< A cell for every column each.

private:
    std::vector<Column> mColumns;
    std::vector<std::vector<std::string>> mRows;
};

} // namespace zonstory

#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zonstory {

/// A file of rows that cannot be read or makes no sense: "file: reason" or "file:line: reason".
class CsvError : public std::runtime_error {
public:
    CsvError(const std::string& file, std::size_t line, const std::string& reason);
};

/// What may stand between two fields.
inline constexpr std::string_view kCsvDelimiters = ",;\t|";

struct CsvRow {
    std::size_t line = 0; ///< Where the row starts, from 1.
    std::vector<std::string> fields;
};

/// What a spreadsheet, or a person, saved as CSV.
///
/// Comma, semicolon, tab and bar are told apart by the first row, or by a line "sep=;" in front of it. It is read as
/// ForeignToUTF8() has it (text/ForeignText.h). Blanks around an unquoted field do not count; empty rows are left out.
struct CsvContents {
    CsvRow header;
    std::vector<CsvRow> rows; ///< As they are; a row may be shorter or longer than the header.
};

/// @param path  A file's name, or "-" for standard input.
/// @throws CsvError when the file cannot be read, is empty, or has a quote that is not closed.
CsvContents ReadCsv(const std::string& path);

/// @param name  Stands for the file's name in an error.
/// @throws CsvError
CsvContents ParseCsv(std::string_view bytes, const std::string& name);

/// Part of a text, of which encoding and delimiter are known already.
/// @param firstLine  Where the part begins in the whole.
/// @throws CsvError
CsvContents ParseCsvPart(std::string_view text, const std::string& name, char delimiter, std::size_t firstLine);

} // namespace zonstory

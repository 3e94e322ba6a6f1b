#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "text/ForeignText.h"

namespace zonstory {

/// A cell of a log, and the bytes of the file that it takes: all between two delimiters, quotes and blanks included.
struct LogCell {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string text; ///< UTF-8. Without quotes; without blanks around it where it has none.
    bool isQuoted = false;
};

struct LogLine {
    std::size_t line = 0; ///< In the file, from 1, where it starts.
    std::vector<LogCell> cells;
};

/// An ALE file, or a file of comma separated values with any lines of heading in front of it.
struct LogSheet {
    bool isAle = false;
    char delimiter = '\t';
    TextEncoding encoding = TextEncoding::UTF8;
    bool hasHeader = false;
    LogLine header;            ///< Without one: of CSV, the first line that could be it.
    std::vector<LogLine> rows; ///< Those with text in a cell.
};

/// How much a line of titles speaks for being the header of a CSV file; 0 when it is none.
using RateTitles = std::function<int(const std::vector<std::string>& titles)>;

/// Finds the cells of a log. Encoding and delimiter (comma, semicolon, tab, bar) are found out; lines end with LF, CR LF or
/// CR, or all of them.
/// @param name  The file's, for messages.
/// @param rate  The first of the best lines among the first fifty is the header.
/// @throws CsvError "name:line: reason" when a quote is out of place or not closed, or an ALE file lacks a section.
LogSheet ReadLogSheet(std::string_view bytes, const std::string& name, const RateTitles& rate);

/// The texts of a line.
std::vector<std::string> TextsOf(const LogLine& line);

} // namespace zonstory

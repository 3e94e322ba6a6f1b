#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "commands/LogFields.h"
#include "log/ClipXml.h"
#include "log/Filling.h"
#include "log/LogSheet.h"

namespace zonstory {

/// What rows of a log are to say.
struct RowWords {
    /// @param current  What the row says now.
    /// @return Empty where it is to stay as it is.
    std::function<std::string(std::size_t row, LogField field, std::string_view current)> text;
    std::function<std::vector<std::string>(std::size_t row, LogField field)> keywords;
};

/// A log on disk, whatever its format: ALE, CSV or FCPXML.
class LogFile {
public:
    /// @throws CsvError when it cannot be read or is none of them.
    LogFile(std::string path, const GivenColumns& columns);

    const std::string& Path() const { return mPath; }
    const std::string& Bytes() const { return mBytes; }
    const ClipLog& Rows() const { return mRows; }

    /// @throws CsvError when two fields have one column.
    Filling Fill(const std::vector<LogFill>& fills, const RowWords& words, bool replace) const;

    /// The names of the columns that CellChange::column counts.
    std::vector<std::string> ColumnNames(const std::vector<LogFill>& fills) const;

private:
    Filling FillRows(const LogSheet& sheet, const std::vector<LogFill>& fills, const RowWords& words,
                     bool replace) const;

    std::string mPath;
    std::string mBytes;
    std::variant<LogSheet, ClipXml> mContent;
    ClipLog mRows;
};

} // namespace zonstory

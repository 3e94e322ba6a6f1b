#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "log/LogSheet.h"
#include "match/LogColumns.h"

namespace zonstory {

/// What somebody on the set, or a camera, noted of the clips: a row a clip.
struct ClipLog {
    struct Row {
        std::size_t line = 0; ///< In the file, from 1.
        std::vector<std::string> fields;
    };

    std::string name;                 ///< Of the file, for messages.
    std::vector<std::string> columns; ///< All of them, also those that nobody here knows.
    LogColumns known;
    std::vector<Row> rows;

    /// A field of a row without blanks around it; empty where the row is too short or the log has no such column.
    std::string_view Field(const Row& row, std::optional<std::size_t> column) const;
    std::string Where(const Row& row) const; ///< "day3.csv:12"
};

/// Reads a log: an ALE file, or CSV with the columns under their usual names, in any case and order, behind
/// any lines of heading. Encoding and delimiter (comma, semicolon, tab, bar) are found out. All columns are kept.
/// @param name  The file's, for messages.
/// @param given  Names of columns that nobody here knows.
/// @throws CsvError "name:line: reason" when there is no header with a scene and a clip, which then lists the columns that
///         were found, or a quote is not closed.
ClipLog ReadClipLog(std::string_view bytes, const std::string& name, const GivenColumns& given = {});

/// The cells of a log that is to be filled: it need not name scenes, so its header is known by any column of clips or
/// scenes.
/// @throws CsvError as ReadClipLog().
LogSheet ReadSheetOfClips(std::string_view bytes, const std::string& name, const GivenColumns& given = {});

/// What a sheet says.
ClipLog MakeClipLog(LogSheet sheet, const std::string& name, const GivenColumns& given);

} // namespace zonstory

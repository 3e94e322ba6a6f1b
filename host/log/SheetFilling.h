#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "log/Filling.h"
#include "log/LogSheet.h"

namespace zonstory {

/// A column to be filled.
struct SheetColumn {
    std::string title;
    std::optional<std::size_t> at; ///< Which one of the sheet's; none for a column that it is to get.
};

/// Finds the edits that fill cells of a sheet; all other bytes stay.
///
/// Empty cells are filled, others where `replace` says so. New columns come behind the heading's last, if any row has a
/// value for them; rows as long as the heading get their delimiters, so that a table that was rectangular still is. An ALE
/// file gets no column beyond its sixty-fourth and none with a title of more than fourteen characters. Values become
/// OneLine(); CSV puts quotes around those that need them, and around all where it has them around every title.
/// @param values  For each row of the sheet a value for each of the columns; an empty one changes nothing.
Filling FillSheet(const LogSheet& sheet, std::span<const SheetColumn> columns,
                  std::span<const std::vector<std::string>> values, bool replace);

} // namespace zonstory

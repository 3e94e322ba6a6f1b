#pragma once

#include <stdexcept>
#include <string>

#include "output/Table.h"

namespace zonstory {

/// Why no spreadsheet could be made, in one line.
class SheetError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The table as a spreadsheet (XLSX): one sheet, its first row the columns' names in words, in bold and always in sight.
/// Columns of numbers hold numbers; everything else is text, whatever it looks like, and never a formula. What is no UTF-8
/// is written out as "\xe9", and a cell of more than 32767 characters, which no spreadsheet holds, is cut there.
/// @param name  Of the sheet: up to 31 characters, none of []:*?/\.
/// @throws SheetError
std::string SheetOf(const Table& table, const std::string& name);

} // namespace zonstory

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "output/Format.h"
#include "output/Output.h"
#include "output/Table.h"

namespace zonstory {

/// Where a table of results goes, and as what.
struct ResultTarget {
    Format format = Format::Text;
    std::string file; ///< Empty or "-" for standard output. An ending in .xlsx, .json or .csv wins over `format`.
};

/// A result in each of its forms; only the one that is wanted is made.
struct ResultForms {
    const char* name; ///< In one word: of the spreadsheet's sheet.
    std::function<std::string()> text;
    std::function<std::string()> json;
    std::function<Table()> table; ///< For CSV and spreadsheets.
};

/// Prints the result, or writes the file, whole or not at all, and prints its name.
/// @throws OutputError, SheetError
void DeliverResult(const ResultTarget& target, const ResultForms& forms, Output& output);

/// Keeps results from taking the place of what they are made from, or of any clip.
/// @param inputs  Files and folders, as the user named them.
/// @throws UsageError
void RefuseToReplace(const std::string& target, const std::vector<std::string>& inputs);

} // namespace zonstory

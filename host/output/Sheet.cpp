#include "output/Sheet.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <fmt/format.h>
#include <xlsxwriter.h>

#include "files/FileError.h"
#include "files/ReadFile.h"
#include "output/DisplayWidth.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestText = 32767;
constexpr std::size_t kNarrowest = 6;
constexpr std::size_t kWidest = 50; ///< In characters; longer cells are cut off by the next one, not lost.

void Require(lxw_error error) {
    if (error != LXW_NO_ERROR) {
        throw SheetError(fmt::format("no spreadsheet can be made of this: {}", lxw_strerror(error)));
    }
}

// The library writes files alone, so it gets a folder of its own.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::error_code error;
        std::string pattern = (fs::temp_directory_path(error) / "zonstory-sheet-XXXXXX").string();
        if (error || ::mkdtemp(pattern.data()) == nullptr) {
            throw SheetError("no spreadsheet can be made: there is no place for temporary files");
        }
        mPath = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    fs::path operator/(const char* name) const { return mPath / name; }

private:
    fs::path mPath;
};

struct CloseWorkbook {
    void operator()(lxw_workbook* workbook) const { workbook_close(workbook); } // frees it as well
};

// "time_of_day" as people write it.
std::string InWords(std::string name) {
    std::replace(name.begin(), name.end(), '_', ' ');
    if (!name.empty() && name.front() >= 'a' && name.front() <= 'z') {
        name.front() = static_cast<char>(name.front() - 'a' + 'A');
    }
    return name;
}

// Bytes are never fewer than the characters that are counted.
std::string FitForCell(const std::string& cell) {
    std::string text = ValidUTF8(cell);
    if (text.size() > kLongestText) {
        std::size_t end = kLongestText;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
            --end;
        }
        text.resize(end);
    }
    return text;
}

class Sheet {
public:
    Sheet(lxw_workbook* workbook, const std::string& name)
        : mSheet(workbook_add_worksheet(workbook, name.c_str())), mBold(workbook_add_format(workbook)) {
        if (mSheet == nullptr || mBold == nullptr) {
            throw SheetError("no spreadsheet can be made: the sheet's name, or memory");
        }
        format_set_bold(mBold);
    }

    void Write(const Table& table) {
        const auto columns = static_cast<lxw_col_t>(table.Columns().size());
        for (lxw_col_t at = 0; at < columns; ++at) {
            WriteColumn(table, at);
        }
        worksheet_freeze_panes(mSheet, 1, 0);
        if (!table.Rows().empty() && columns > 0) {
            const auto last = static_cast<lxw_row_t>(table.Rows().size());
            Require(worksheet_autofilter(mSheet, 0, 0, last, static_cast<lxw_col_t>(columns - 1)));
            // Scene numbers are texts that look like numbers.
            const std::string range = fmt::format("A1:XFD{}", last + 1);
            Require(worksheet_ignore_errors(mSheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, range.c_str()));
        }
    }

private:
    void WriteColumn(const Table& table, lxw_col_t at) {
        const Column& column = table.Columns()[at];
        const std::string heading = FitForCell(InWords(column.name));
        Require(worksheet_write_string(mSheet, 0, at, heading.c_str(), mBold));
        std::size_t width = std::max(kNarrowest, DisplayWidth(heading) + 2); // and the arrow of the filter
        for (std::size_t row = 0; row < table.Rows().size(); ++row) {
            const std::string& cell = table.Rows()[row][at];
            WriteCell(static_cast<lxw_row_t>(row + 1), at, cell, column.isNumber);
            width = std::max(width, std::min(kWidest, cell.size()));
        }
        Require(worksheet_set_column(mSheet, at, at, static_cast<double>(std::min(kWidest, width) + 1), nullptr));
    }

    void WriteCell(lxw_row_t row, lxw_col_t column, const std::string& cell, bool isNumber) {
        if (cell.empty()) {
            return;
        }
        double number = 0;
        const auto [rest, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
        if (isNumber && error == std::errc() && rest == cell.data() + cell.size()) {
            Require(worksheet_write_number(mSheet, row, column, number, nullptr));
        } else {
            Require(worksheet_write_string(mSheet, row, column, FitForCell(cell).c_str(), nullptr));
        }
    }

    lxw_worksheet* mSheet;
    lxw_format* mBold;
};

} // namespace

std::string SheetOf(const Table& table, const std::string& name) try {
    const TemporaryFolder folder;
    const fs::path file = folder / "sheet.xlsx";
    std::unique_ptr<lxw_workbook, CloseWorkbook> workbook(workbook_new(file.c_str()));
    if (workbook == nullptr) {
        throw SheetError("no spreadsheet can be made: out of memory");
    }
    Sheet(workbook.get(), name).Write(table);
    Require(workbook_close(workbook.release()));
    return ReadFile(file);
} catch (const FileError& error) {
    throw SheetError(std::string("no spreadsheet can be made: a temporary file ") + error.what());
}

} // namespace zonstory

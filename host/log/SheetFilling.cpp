#include "log/SheetFilling.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "log/OneLine.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr std::size_t kMostAleColumns = 64;
constexpr std::size_t kLongestAleTitle = 14; ///< Characters.

std::size_t CountCharacters(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

class SheetFiller {
public:
    SheetFiller(const LogSheet& sheet, std::span<const SheetColumn> columns,
                std::span<const std::vector<std::string>> values, bool replace)
        : mSheet(sheet), mColumns(columns), mValues(values), mReplace(replace),
          mQuotesAll(!sheet.isAle && std::all_of(sheet.header.cells.begin(), sheet.header.cells.end(),
                                                 [](const LogCell& cell) { return cell.isQuoted; })) {}

    Filling Fill() {
        PlaceColumns();
        for (std::size_t row = 0; row < mSheet.rows.size(); ++row) {
            FillRow(row);
        }
        return std::move(mFilling);
    }

private:
    struct Place {
        std::size_t at = 0;     ///< In a row.
        std::size_t column = 0; ///< Of mColumns.
    };

    // ---- Columns ------------------------------------------------------------------------------------------------------

    void PlaceColumns() {
        std::string titles;
        for (std::size_t column = 0; column < mColumns.size(); ++column) {
            if (mColumns[column].at) {
                mPlaces.push_back({*mColumns[column].at, column});
            } else if (HasValues(column) && MayAdd(mColumns[column].title)) {
                titles += Delimiter() + *Encode(mColumns[column].title);
                mPlaces.push_back({mSheet.header.cells.size() + mAdded++, column});
            }
        }
        std::sort(mPlaces.begin(), mPlaces.end(),
                  [](const Place& left, const Place& right) { return left.at < right.at; });
        if (!titles.empty()) {
            const std::size_t end = mSheet.header.cells.back().end;
            mFilling.edits.push_back({end, end, std::move(titles)});
        }
    }

    bool HasValues(std::size_t column) const {
        return std::any_of(mValues.begin(), mValues.end(),
                           [column](const auto& row) { return !OneLine(row[column]).empty(); });
    }

    bool MayAdd(const std::string& title) {
        const std::string reason = WhyNotToAdd(title);
        if (!reason.empty()) {
            mFilling.notes.push_back(fmt::format("no column {}: {}", title, reason));
        }
        return reason.empty();
    }

    std::string WhyNotToAdd(const std::string& title) const {
        if (mSheet.isAle && mSheet.header.cells.size() + mAdded >= kMostAleColumns) {
            return fmt::format("an ALE file has at most {}", kMostAleColumns);
        }
        if (mSheet.isAle && CountCharacters(title) > kLongestAleTitle) {
            return fmt::format("a title in an ALE file has at most {} characters", kLongestAleTitle);
        }
        if (!Encode(title)) {
            return "the file's encoding cannot hold the title";
        }
        const auto isTooLong = [this](const LogLine& row) { return TextBeyondHeader(row); };
        const auto found = std::find_if(mSheet.rows.begin(), mSheet.rows.end(), isTooLong);
        return found == mSheet.rows.end() ? std::string()
                                          : fmt::format("line {} has cells behind the last title", found->line);
    }

    bool TextBeyondHeader(const LogLine& row) const {
        const auto first =
            row.cells.begin() + static_cast<std::ptrdiff_t>(std::min(row.cells.size(), mSheet.header.cells.size()));
        return std::any_of(first, row.cells.end(), [](const LogCell& cell) { return !cell.text.empty(); });
    }

    // ---- Rows ---------------------------------------------------------------------------------------------------------

    void FillRow(std::size_t row) {
        const LogLine& line = mSheet.rows[row];
        std::string behind; // the row's last cell
        std::size_t size = line.cells.size();
        for (const Place& place : mPlaces) {
            const std::string value = OneLine(mValues[row][place.column]);
            if (place.at < line.cells.size()) {
                FillCell(row, place.column, line.cells[place.at], value);
            } else if (const std::string cell = NewCell(row, place.column, value); !cell.empty()) {
                Pad(behind, size, place.at);
                behind += Delimiter() + cell;
                ++size;
            }
        }
        if (line.cells.size() >= mSheet.header.cells.size()) {
            Pad(behind, size, mSheet.header.cells.size() + mAdded);
        }
        if (!behind.empty()) {
            const std::size_t end = line.cells.back().end;
            mFilling.edits.push_back({end, end, std::move(behind)});
        }
    }

    void FillCell(std::size_t row, std::size_t column, const LogCell& cell, const std::string& value) {
        const std::string old(WithoutBlanks(cell.text));
        if (value.empty() || value == old) {
            return;
        }
        if (!old.empty() && !mReplace) {
            Report(row, column, CellState::Kept, old, value);
            return;
        }
        std::optional<std::string> bytes = Encode(value, cell.isQuoted);
        Report(row, column,
               !bytes        ? CellState::Unwritable
               : old.empty() ? CellState::Filled
                             : CellState::Replaced,
               old, value);
        if (bytes) {
            mFilling.edits.push_back({cell.begin, cell.end, std::move(*bytes)});
        }
    }

    // Behind the row's last; empty where it gets none.
    std::string NewCell(std::size_t row, std::size_t column, const std::string& value) {
        if (value.empty()) {
            return {};
        }
        std::optional<std::string> bytes = Encode(value);
        Report(row, column, bytes ? CellState::Filled : CellState::Unwritable, "", value);
        return std::move(bytes).value_or("");
    }

    void Pad(std::string& behind, std::size_t& size, std::size_t wanted) const {
        for (; size < wanted; ++size) {
            behind += Delimiter() + *Encode("");
        }
    }

    void Report(std::size_t row, std::size_t column, CellState state, std::string old, std::string value) {
        mFilling.cells.push_back({row, column, state, std::move(old), std::move(value)});
    }

    // ---- Bytes --------------------------------------------------------------------------------------------------------

    std::string Delimiter() const { return *EncodeText(std::string(1, mSheet.delimiter), mSheet.encoding); }

    std::optional<std::string> Encode(const std::string& value, bool isQuoted = false) const {
        const bool needsQuotes =
            !mSheet.isAle && value.find_first_of(std::string("\"") + mSheet.delimiter) != std::string::npos;
        return EncodeText(isQuoted || mQuotesAll || needsQuotes ? Quoted(value) : value, mSheet.encoding);
    }

    static std::string Quoted(const std::string& value) {
        std::string quoted = "\"";
        for (const char byte : value) {
            quoted.append(byte == '"' ? 2 : 1, byte);
        }
        return quoted + '"';
    }

    const LogSheet& mSheet;
    std::span<const SheetColumn> mColumns;
    std::span<const std::vector<std::string>> mValues;
    bool mReplace;
    bool mQuotesAll;
    std::size_t mAdded = 0;
    std::vector<Place> mPlaces; ///< From left to right.
    Filling mFilling;
};

} // namespace

Filling FillSheet(const LogSheet& sheet, std::span<const SheetColumn> columns,
                  std::span<const std::vector<std::string>> values, bool replace) {
    return SheetFiller(sheet, columns, values, replace).Fill();
}

} // namespace zonstory

#include "log/LogSheet.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "log/LogText.h"
#include "output/CsvReader.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr std::size_t kMostHeadingLines = 50; ///< In front of the header of a CSV file.

// Where a line's end, if it is one, stops: LF, CR LF or CR.
std::size_t BehindLineEnd(std::string_view signs, std::size_t end) {
    return std::min(end + (signs.substr(end, 2) == "\r\n" ? 2 : 1), signs.size());
}

struct Stretch {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Hands out lines and counts them.
class Lines {
public:
    explicit Lines(std::string_view signs) : mSigns(signs) {}

    bool Next(Stretch& line) {
        if (mAt >= mSigns.size()) {
            return false;
        }
        line = {mAt, std::min(mSigns.find_first_of("\r\n", mAt), mSigns.size())};
        mAt = BehindLineEnd(mSigns, line.end);
        ++mNumber;
        return true;
    }
    std::string_view Signs(const Stretch& line) const { return mSigns.substr(line.begin, line.end - line.begin); }
    std::size_t Number() const { return mNumber; }

private:
    std::string_view mSigns;
    std::size_t mAt = 0;
    std::size_t mNumber = 0;
};

std::vector<LogCell> Split(const LogText& text, const Stretch& line, char delimiter) {
    std::vector<LogCell> cells;
    const std::string_view signs = text.Signs().substr(0, line.end);
    for (std::size_t begin = line.begin; begin <= line.end;) {
        const std::size_t end = std::min(signs.find(delimiter, begin), line.end);
        cells.push_back(
            {text.ByteAt(begin), text.ByteAt(end), std::string(WithoutBlanks(text.Decode(begin, end))), false});
        begin = end + 1;
    }
    return cells;
}

// ---- ALE --------------------------------------------------------------------------------------------------------------

bool IsAle(std::string_view signs) {
    Lines lines(signs);
    Stretch line;
    while (lines.Next(line) && WithoutBlanks(lines.Signs(line)).empty()) {
    }
    return EqualIgnoringCase(WithoutBlanks(lines.Signs(line)), "heading");
}

enum class Section { Heading, Column, Data };

void ReadAle(const LogText& text, const std::string& name, LogSheet& sheet) {
    Section section = Section::Heading;
    Lines lines(text.Signs());
    for (Stretch line; lines.Next(line);) {
        const std::string_view trimmed = WithoutBlanks(lines.Signs(line));
        if (trimmed.empty()) {
            continue;
        }
        if (section != Section::Data && EqualIgnoringCase(trimmed, "column")) {
            section = Section::Column;
        } else if (section != Section::Data && EqualIgnoringCase(trimmed, "data")) {
            section = Section::Data;
        } else if (section == Section::Column && !sheet.hasHeader) {
            sheet.header = {lines.Number(), Split(text, line, '\t')};
            sheet.hasHeader = true;
        } else if (section == Section::Data) {
            sheet.rows.push_back({lines.Number(), Split(text, line, '\t')});
        }
    }
    if (section != Section::Data) {
        throw CsvError(name, lines.Number(), section == Section::Heading ? "no Column section" : "no Data section");
    }
}

// ---- CSV --------------------------------------------------------------------------------------------------------------

struct Header {
    std::size_t line = 0;
    std::size_t begin = 0;
    char delimiter = ',';
    int rate = -1;
    std::vector<LogCell> cells;
};

Header FindHeader(const LogText& text, const RateTitles& rate) {
    Header best;
    Lines lines(text.Signs());
    for (Stretch line; lines.Number() < kMostHeadingLines && lines.Next(line);) {
        for (const char delimiter : kCsvDelimiters) {
            if (lines.Signs(line).find(delimiter) == std::string_view::npos) {
                continue;
            }
            std::vector<LogCell> cells = Split(text, line, delimiter);
            for (LogCell& cell : cells) {
                std::erase(cell.text, '"');
            }
            if (const int rated = rate(TextsOf({0, cells})); rated > best.rate) {
                best = {lines.Number(), line.begin, delimiter, rated, std::move(cells)};
            }
        }
    }
    return best;
}

std::size_t CountLineEnds(std::string_view signs) {
    std::size_t count = 0;
    for (std::size_t end = signs.find_first_of("\r\n"); end != std::string_view::npos;) {
        ++count;
        end = signs.find_first_of("\r\n", BehindLineEnd(signs, end));
    }
    return count;
}

// Of a text in which each quote stands twice.
std::string WithoutDoubledQuotes(std::string_view text) {
    std::string single;
    for (std::size_t at = 0; at < text.size(); at += text[at] == '"' ? 2 : 1) {
        single += text[at];
    }
    return single;
}

// Takes rows one after another: cells with quotes around them, quotes doubled within, or without any.
class CsvRows {
public:
    CsvRows(const LogText& text, const std::string& name, const Header& header)
        : mText(text), mSigns(text.Signs()), mName(name), mDelimiter(header.delimiter), mAt(header.begin),
          mLine(header.line), mStops(std::string("\"\r\n") + header.delimiter) {}

    bool Next(LogLine& row) {
        while (mAt < mSigns.size()) {
            row = {mLine, {}};
            row.cells.push_back(TakeCell());
            while (mAt < mSigns.size() && mSigns[mAt] == mDelimiter) {
                ++mAt;
                row.cells.push_back(TakeCell());
            }
            mLine = mLine + 1 + mLinesWithin;
            mLinesWithin = 0;
            mAt = mAt < mSigns.size() ? BehindLineEnd(mSigns, mAt) : mAt;
            if (std::any_of(row.cells.begin(), row.cells.end(),
                            [](const LogCell& cell) { return !cell.text.empty(); })) {
                return true;
            }
        }
        return false;
    }

private:
    LogCell TakeCell() {
        const std::size_t begin = mAt;
        SkipBlanks();
        if (mAt < mSigns.size() && mSigns[mAt] == '"') {
            std::string text = TakeQuoted();
            return {mText.ByteAt(begin), mText.ByteAt(mAt), std::move(text), true};
        }
        mAt = std::min(mSigns.find_first_of(mStops, mAt), mSigns.size());
        RequireEndOfCell();
        return {mText.ByteAt(begin), mText.ByteAt(mAt), std::string(WithoutBlanks(mText.Decode(begin, mAt))), false};
    }

    std::string TakeQuoted() {
        const std::size_t begin = ++mAt;
        for (mAt = FindQuote(mAt); mSigns.substr(mAt + 1, 1) == "\"";) {
            mAt = FindQuote(mAt + 2);
        }
        const std::size_t end = mAt++;
        mLinesWithin += CountLineEnds(mSigns.substr(begin, end - begin));
        SkipBlanks();
        RequireEndOfCell();
        return WithoutDoubledQuotes(mText.Decode(begin, end));
    }

    std::size_t FindQuote(std::size_t from) const {
        const std::size_t quote = mSigns.find('"', from);
        return quote == std::string_view::npos ? Fail() : quote;
    }

    void SkipBlanks() {
        while (mAt < mSigns.size() && mSigns[mAt] != mDelimiter && (mSigns[mAt] == ' ' || mSigns[mAt] == '\t')) {
            ++mAt;
        }
    }

    void RequireEndOfCell() const {
        if (mAt < mSigns.size() && mSigns[mAt] != mDelimiter && mSigns[mAt] != '\r' && mSigns[mAt] != '\n') {
            Fail();
        }
    }

    [[noreturn]] std::size_t Fail() const { throw CsvError(mName, mLine, "a quote is out of place or not closed"); }

    const LogText& mText;
    std::string_view mSigns;
    const std::string& mName;
    char mDelimiter;
    std::size_t mAt;
    std::size_t mLine;
    std::size_t mLinesWithin = 0; ///< The cells of the row, in quotes.
    std::string mStops;
};

void ReadCsvCells(const LogText& text, const std::string& name, const RateTitles& rate, LogSheet& sheet) {
    Header header = FindHeader(text, rate);
    sheet.delimiter = header.delimiter;
    sheet.hasHeader = header.rate > 0;
    if (!sheet.hasHeader) {
        sheet.header = {header.line, std::move(header.cells)};
        return;
    }
    CsvRows rows(text, name, header);
    rows.Next(sheet.header);
    for (LogLine row; rows.Next(row);) {
        sheet.rows.push_back(std::move(row));
    }
}

} // namespace

LogSheet ReadLogSheet(std::string_view bytes, const std::string& name, const RateTitles& rate) {
    const LogText text(bytes);
    LogSheet sheet;
    sheet.encoding = text.Encoding();
    sheet.isAle = IsAle(text.Signs());
    if (sheet.isAle) {
        ReadAle(text, name, sheet);
    } else {
        ReadCsvCells(text, name, rate, sheet);
    }
    return sheet;
}

std::vector<std::string> TextsOf(const LogLine& line) {
    std::vector<std::string> texts;
    texts.reserve(line.cells.size());
    std::transform(line.cells.begin(), line.cells.end(), std::back_inserter(texts),
                   [](const LogCell& cell) { return cell.text; });
    return texts;
}

} // namespace zonstory

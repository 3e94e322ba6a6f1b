#include "output/CsvReader.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <utility>

#include <csv.h>

#include "files/FileError.h"
#include "files/ReadFile.h"
#include "text/ForeignText.h"

namespace zonstory {

namespace {

constexpr std::string_view kSeparatorLine = "sep="; // some spreadsheets say it in front of the first row

std::string_view FirstLine(std::string_view text) {
    return text.substr(0, text.find_first_of("\r\n"));
}

// The delimiter that the line has most of, outside quotes; the comma when it has none.
char FindDelimiter(std::string_view line) {
    std::size_t counts[kCsvDelimiters.size()] = {};
    bool isQuoted = false;
    for (const char byte : line) {
        isQuoted = isQuoted != (byte == '"');
        const std::size_t kind = kCsvDelimiters.find(byte);
        if (!isQuoted && kind != std::string_view::npos) {
            ++counts[kind];
        }
    }
    return kCsvDelimiters[static_cast<std::size_t>(std::max_element(std::begin(counts), std::end(counts)) - counts)];
}

// Up to and with its end: LF, CR LF, or the CR alone of old spreadsheets.
std::size_t LengthOfLine(std::string_view text) {
    const std::size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos) {
        return text.size();
    }
    return end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
}

/// The CSV parser, fed line by line so that it is known on which line a row starts.
class RowReader {
public:
    RowReader(const std::string& name, char delimiter) : mName(name) {
        if (csv_init(&mParser, CSV_STRICT | CSV_STRICT_FINI) != 0) {
            throw std::bad_alloc();
        }
        csv_set_delim(&mParser, static_cast<unsigned char>(delimiter));
    }
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;
    ~RowReader() { csv_free(&mParser); }

    std::vector<CsvRow> Read(std::string_view text, std::size_t firstLine) {
        mLine = firstLine;
        for (; !text.empty(); ++mLine) {
            const std::string_view line = text.substr(0, LengthOfLine(text));
            ReadLine(line);
            text.remove_prefix(line.size());
        }
        Require(csv_fini(&mParser, &OnField, &OnRow, this) == 0);
        return std::move(mRows);
    }

private:
    void ReadLine(std::string_view line) {
        if (!mIsInsideRow) {
            mRow.line = mLine;
        }
        const bool isEmpty = line.find_first_not_of(" \t\r\n") == std::string_view::npos;
        mIsInsideRow = mIsInsideRow || !isEmpty;
        Require(csv_parse(&mParser, line.data(), line.size(), &OnField, &OnRow, this) == line.size());
    }

    static void OnField(void* data, std::size_t length, void* self) {
        static_cast<RowReader*>(self)->Guarded(
            [&](RowReader& reader) { reader.mRow.fields.emplace_back(static_cast<const char*>(data), length); });
    }

    static void OnRow(int, void* self) {
        static_cast<RowReader*>(self)->Guarded([](RowReader& reader) {
            const auto& fields = reader.mRow.fields;
            if (std::any_of(fields.begin(), fields.end(), [](const std::string& field) { return !field.empty(); })) {
                reader.mRows.push_back(reader.mRow);
            }
            reader.mRow.fields.clear();
            reader.mIsInsideRow = false;
        });
    }

    // Nothing may be thrown through the parser's own frames.
    template <typename Step>
    void Guarded(Step step) {
        try {
            step(*this);
        } catch (...) {
            mThrown = std::current_exception();
        }
    }

    void Require(bool isParsed) {
        if (mThrown) {
            std::rethrow_exception(mThrown);
        }
        if (!isParsed && csv_error(&mParser) == CSV_ENOMEM) {
            throw std::bad_alloc();
        }
        if (!isParsed) {
            throw CsvError(mName, mRow.line, "a quote is out of place or not closed");
        }
    }

    std::string mName;
    csv_parser mParser = {};
    std::vector<CsvRow> mRows;
    CsvRow mRow;
    std::size_t mLine = 1;
    bool mIsInsideRow = false;
    std::exception_ptr mThrown;
};

} // namespace

CsvError::CsvError(const std::string& file, std::size_t line, const std::string& reason)
    : std::runtime_error(file + (line == 0 ? "" : ":" + std::to_string(line)) + ": " + reason) {}

CsvContents ReadCsv(const std::string& path) {
    const std::string name = path == "-" ? "standard input" : path;
    try {
        return ParseCsv(ReadFile(path), name);
    } catch (const FileError& error) {
        throw CsvError(name, 0, error.what());
    }
}

CsvContents ParseCsv(std::string_view bytes, const std::string& name) {
    const std::string converted = ForeignToUTF8(bytes);
    std::string_view text = converted;
    std::size_t line = 1;
    char delimiter = FindDelimiter(FirstLine(text));
    if (FirstLine(text).size() == kSeparatorLine.size() + 1 && text.starts_with(kSeparatorLine)) {
        delimiter = text[kSeparatorLine.size()];
        text.remove_prefix(LengthOfLine(text));
        ++line;
    }
    return ParseCsvPart(text, name, delimiter, line);
}

CsvContents ParseCsvPart(std::string_view text, const std::string& name, char delimiter, std::size_t firstLine) {
    std::vector<CsvRow> rows = RowReader(name, delimiter).Read(text, firstLine);
    if (rows.empty()) {
        throw CsvError(name, 0, "has no rows");
    }
    CsvContents contents;
    contents.header = std::move(rows.front());
    contents.rows.assign(std::make_move_iterator(rows.begin() + 1), std::make_move_iterator(rows.end()));
    return contents;
}

} // namespace zonstory

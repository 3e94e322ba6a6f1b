#include "match/ClipLog.h"

#include <algorithm>
#include <utility>

#include "output/CsvReader.h"
#include "text/AsciiText.h"
#include "text/ForeignText.h"

namespace zonstory {

namespace {

constexpr std::size_t kMostHeadingLines = 50; ///< In front of the header of a CSV file.

// Hands out lines, ended by LF, CR LF or CR, and counts them.
class Lines {
public:
    explicit Lines(std::string_view text) : mText(text) {}

    bool Next(std::string_view& line) {
        if (mText.empty()) {
            return false;
        }
        const std::size_t end = std::min(mText.find_first_of("\r\n"), mText.size());
        line = mText.substr(0, end);
        mText.remove_prefix(std::min(end + (mText.substr(end, 2) == "\r\n" ? 2 : 1), mText.size()));
        ++mNumber;
        return true;
    }
    std::size_t Number() const { return mNumber; }
    std::string_view Rest() const { return mText; }

private:
    std::string_view mText;
    std::size_t mNumber = 0;
};

std::vector<std::string> Split(std::string_view line, char delimiter) {
    std::vector<std::string> fields;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find(delimiter, begin), line.size());
        fields.emplace_back(WithoutBlanks(line.substr(begin, end - begin)));
        begin = end + 1;
    }
    return fields;
}

// ---- ALE --------------------------------------------------------------------------------------------------------------

bool IsAle(std::string_view text) {
    Lines lines(text);
    std::string_view line;
    while (lines.Next(line) && WithoutBlanks(line).empty()) {
    }
    return EqualIgnoringCase(WithoutBlanks(line), "heading");
}

enum class Section { Heading, Column, Data };

ClipLog ReadAvidLog(std::string_view text, const std::string& name) {
    ClipLog log;
    Section section = Section::Heading;
    Lines lines(text);
    for (std::string_view line; lines.Next(line);) {
        const std::string_view trimmed = WithoutBlanks(line);
        if (trimmed.empty()) {
            continue;
        }
        if (section != Section::Data && EqualIgnoringCase(trimmed, "column")) {
            section = Section::Column;
        } else if (section != Section::Data && EqualIgnoringCase(trimmed, "data")) {
            section = Section::Data;
        } else if (section == Section::Column && log.columns.empty()) {
            log.columns = Split(line, '\t');
        } else if (section == Section::Data) {
            log.rows.push_back({lines.Number(), Split(line, '\t')});
        }
    }
    if (section != Section::Data) {
        throw CsvError(name, lines.Number(), section == Section::Heading ? "no Column section" : "no Data section");
    }
    return log;
}

// ---- CSV --------------------------------------------------------------------------------------------------------------

struct Header {
    std::size_t line = 0; ///< 0 when there is none.
    char delimiter = ',';
    std::string_view rest;           ///< The text from the header on.
    std::vector<std::string> titles; ///< Without a header: the first line that could be one.
};

std::vector<std::string> SplitTitles(std::string_view line, char delimiter) {
    std::vector<std::string> titles = Split(line, delimiter);
    for (std::string& title : titles) {
        std::erase(title, '"');
    }
    return titles;
}

Header FindHeader(std::string_view text, const GivenColumns& given) {
    Header none;
    Lines lines(text);
    std::string_view before = text;
    for (std::string_view line; lines.Number() < kMostHeadingLines && lines.Next(line); before = lines.Rest()) {
        for (const char delimiter : kCsvDelimiters) {
            if (line.find(delimiter) == std::string_view::npos) {
                continue;
            }
            std::vector<std::string> titles = SplitTitles(line, delimiter);
            if (FindLogColumns(titles, given).AreEnough()) {
                return {lines.Number(), delimiter, before, {}};
            }
            if (none.titles.empty()) {
                none.titles = std::move(titles);
            }
        }
    }
    return none;
}

std::string Missing(const std::string& reason, const std::vector<std::string>& titles) {
    std::string found;
    for (const std::string& title : titles) {
        found += (found.empty() ? "; found are " : ", ") + title;
    }
    return reason + found + (found.empty() ? "" : ", which --columns can name (clip=…,scene=…)");
}

ClipLog ReadCsvLog(std::string_view text, const std::string& name, const GivenColumns& given) {
    const Header header = FindHeader(text, given);
    if (header.line == 0) {
        throw CsvError(name, 1, Missing("no header names a scene column and a clip column", header.titles));
    }
    CsvContents contents = ParseCsvPart(header.rest, name, header.delimiter, header.line);
    ClipLog log;
    log.columns = std::move(contents.header.fields);
    log.rows.reserve(contents.rows.size());
    for (CsvRow& row : contents.rows) {
        log.rows.push_back({row.line, std::move(row.fields)});
    }
    return log;
}

} // namespace

std::string_view ClipLog::Field(const Row& row, std::optional<std::size_t> column) const {
    return column && *column < row.fields.size() ? WithoutBlanks(row.fields[*column]) : std::string_view();
}

std::string ClipLog::Where(const Row& row) const {
    return name + ":" + std::to_string(row.line);
}

ClipLog ReadClipLog(std::string_view bytes, const std::string& name, const GivenColumns& given) {
    const std::string text = ForeignToUTF8(bytes);
    ClipLog log = IsAle(text) ? ReadAvidLog(text, name) : ReadCsvLog(text, name, given);
    log.name = name;
    log.known = FindLogColumns(log.columns, given);
    if (!log.known.AreEnough()) {
        throw CsvError(name, 0, Missing("has no scene column, or no clip column", log.columns));
    }
    return log;
}

} // namespace zonstory

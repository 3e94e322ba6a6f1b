#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

#include <zoncore/UString.h>

#include "Require.h"

namespace fuzz {

/// Whether the conversions that replace what is malformed leave the text alone.
inline bool IsUTF8(const std::string& text) {
    return zoncore::UTF16to8(zoncore::UTF8to16(text)) == text;
}

/// Whether no blank stands at either end.
inline bool IsTrimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    return text.empty() || (kBlanks.find(text.front()) == std::string_view::npos &&
                            kBlanks.find(text.back()) == std::string_view::npos);
}

/// Lines that end with LF, CR LF or CR; an empty text has one. Of UTF-16 bytes it is at least their number.
inline std::size_t CountLines(std::string_view text) {
    std::size_t lines = text.empty() || text.back() == '\n' || text.back() == '\r' ? 0 : 1;
    for (std::size_t at = 0; at < text.size(); ++at) {
        lines += text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != "\n") ? 1 : 0;
    }
    return lines == 0 ? 1 : lines;
}

/// Requires "name: reason" or "name:line: reason", the line being one of the file's.
inline void RequireErrorInFile(std::string_view error, std::string_view name, std::size_t lines) {
    REQUIRE(error.substr(0, name.size() + 1) == std::string(name) + ":");
    error.remove_prefix(name.size() + 1);
    if (error.front() != ' ') {
        std::size_t line = 0;
        const auto [end, problem] = std::from_chars(error.data(), error.data() + error.size(), line);
        REQUIRE(problem == std::errc() && *end == ':');
        REQUIRE(line >= 1 && line <= lines);
    }
}

/// Requires the same fields in row after row.
template <typename Rows>
void RequireSameFields(const Rows& left, const Rows& right) {
    REQUIRE(std::equal(left.begin(), left.end(), right.begin(), right.end(),
                       [](const auto& one, const auto& other) { return one.fields == other.fields; }));
}

/// Requires rows to stand below one another within a file, the first beyond `above`.
template <typename Rows>
void RequireRowsInFile(const Rows& rows, std::size_t above, std::size_t lines) {
    for (const auto& row : rows) {
        REQUIRE(row.line > above && row.line <= lines);
        above = row.line;
    }
}

} // namespace fuzz

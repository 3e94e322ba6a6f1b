#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zonscreenplay::fountain {

struct Line {
    std::string_view text; ///< Without its line end; with the blanks at both ends, unless it holds nothing else.
    std::size_t number = 0;
    bool hasTwoBlanks = false; ///< And nothing else: it is empty, and yet a speech goes on behind it.

    bool IsEmpty() const { return text.empty(); }
};

/// The lines of a text from which boneyards and notes were taken out. A line that held a note alone does not come; one
/// that a boneyard leaves with blanks alone is empty.
class LineReader {
public:
    /// @param text  LF alone ends a line. The marks in it are closed up line by line; it outlives the lines.
    explicit LineReader(std::string& text) : mText(text) {}

    /// @return false at the end; `line` is then empty and keeps its number.
    bool Next(Line& line);

private:
    std::string_view CloseUp(std::size_t start, std::size_t end);

    std::string& mText;
    std::size_t mPosition = 0;
    std::size_t mNumber = 1;
};

/// Makes LF of each CRLF and CR.
void EndLinesWithLineFeeds(std::string& text);

} // namespace zonscreenplay::fountain

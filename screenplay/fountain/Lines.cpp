#include "fountain/Lines.h"

#include <algorithm>

#include "fountain/Characters.h"
#include "fountain/HiddenText.h"

namespace zonscreenplay::fountain {

namespace {

bool Holds(std::string_view line, char mark) {
    return line.find(mark) != std::string_view::npos;
}

bool IsMark(char byte) {
    return kHiddenMarks.find(byte) != std::string_view::npos;
}

} // namespace

bool LineReader::Next(Line& line) {
    while (mPosition < mText.size()) {
        const std::size_t start = mPosition;
        const std::size_t end = std::min(mText.find('\n', start), mText.size());
        const std::string_view raw = std::string_view(mText).substr(start, end - start);
        const bool isCut = Holds(raw, kBoneyardMark) || Holds(raw, kNoteMark);
        const bool isBoneyard = isCut && Holds(raw, kBoneyardMark);
        mPosition = end + 1;
        line.number = mNumber;
        mNumber += 1 + static_cast<std::size_t>(isCut ? std::count(raw.begin(), raw.end(), kLineEndMark) : 0);
        line.text = isCut ? CloseUp(start, end) : raw;
        line.hasTwoBlanks = false;
        if (!WithoutLeadingBlanks(line.text).empty()) {
            return true;
        }
        if (!isCut || isBoneyard) {
            line.hasTwoBlanks = !isCut && line.text.size() >= 2;
            line.text = {};
            return true;
        }
    }
    line.text = {};
    line.hasTwoBlanks = false;
    return false;
}

// Blanks in front of what was taken off the end are none that the line ends with.
std::string_view LineReader::CloseUp(std::size_t start, std::size_t end) {
    const auto first = mText.begin() + static_cast<std::ptrdiff_t>(start);
    const auto last = mText.begin() + static_cast<std::ptrdiff_t>(end);
    const bool isCutAtEnd = IsMark(mText[end - 1]);
    const auto length = static_cast<std::size_t>(std::remove_if(first, last, IsMark) - first);
    const std::string_view text = std::string_view(mText).substr(start, length);
    return isCutAtEnd ? WithoutTrailingBlanks(text) : text;
}

void EndLinesWithLineFeeds(std::string& text) {
    std::size_t read = text.find('\r');
    if (read == std::string::npos) {
        return;
    }
    std::size_t written = read;
    while (read < text.size()) {
        const bool isCR = text[read] == '\r';
        const bool isCRLF = isCR && read + 1 < text.size() && text[read + 1] == '\n';
        text[written++] = isCR ? '\n' : text[read];
        read += isCRLF ? 2 : 1;
    }
    text.resize(written);
}

} // namespace zonscreenplay::fountain

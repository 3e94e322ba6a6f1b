#include "fountain/HiddenText.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace zonscreenplay::fountain {

namespace {

constexpr std::size_t kNowhere = std::string::npos;
constexpr std::size_t kMark = 2; // length of each that opens or closes

std::size_t Count(std::string_view text, char byte) {
    std::size_t count = 0;
    for (std::size_t at = text.find(byte); at != kNowhere; at = text.find(byte, at + 1)) {
        ++count;
    }
    return count;
}

std::size_t CountLineEnds(std::string_view text) {
    return Count(text, '\n') + Count(text, kLineEndMark);
}

// A text that shrinks in place. What is kept moves to the front; what comes behind is still as it was.
class Cutter {
public:
    explicit Cutter(std::string& text) : mText(text) {}

    std::size_t Position() const { return mRead; }

    std::size_t LineAt(std::size_t position) {
        mLine += CountLineEnds(std::string_view(mText).substr(mCounted, position - mCounted));
        mCounted = position;
        return mLine;
    }

    void KeepUpTo(std::size_t end) {
        LineAt(end);
        std::memmove(mText.data() + mWritten, mText.data() + mRead, end - mRead);
        mWritten += end - mRead;
        mRead = end;
    }

    void LeaveOutUpTo(std::size_t end, char mark) {
        const std::size_t before = mLine;
        const std::size_t lineEnds = LineAt(end) - before;
        mText[mWritten++] = mark;
        std::memset(mText.data() + mWritten, kLineEndMark, lineEnds);
        mWritten += lineEnds;
        mRead = end;
    }

    void KeepTheRest() {
        KeepUpTo(mText.size());
        mText.resize(mWritten);
    }

private:
    std::string& mText;
    std::size_t mRead = 0;
    std::size_t mWritten = 0;
    std::size_t mCounted = 0;
    std::size_t mLine = 1;
};

struct Boneyard {
    std::size_t end = kNowhere;
    bool holdsAnother = false;
};

// What lies within counts its own openings and closings.
Boneyard FindNestedEnd(std::string_view text, std::size_t open) {
    Boneyard found;
    std::size_t depth = 1;
    for (std::size_t at = open + kMark; at + 1 < text.size(); ++at) {
        const std::string_view mark = text.substr(at, kMark);
        if (mark == "/*") {
            ++depth;
            ++at;
            found.holdsAnother = true;
        } else if (mark == "*/") {
            ++at;
            if (--depth == 0) {
                found.end = at + 1;
                return found;
            }
        }
    }
    return found;
}

std::size_t FindFirstEnd(std::string_view text, std::size_t open) {
    const std::size_t close = text.find("*/", open + kMark);
    return close == kNowhere ? kNowhere : close + kMark;
}

// Whether a paragraph ends at this line, and with it every note.
bool IsEmpty(std::string_view line) {
    std::size_t blanks = 0;
    bool isBoneyard = false;
    for (const char byte : line) {
        isBoneyard = isBoneyard || byte == kBoneyardMark;
        if (byte == ' ' || byte == '\t') {
            ++blanks;
        } else if (kHiddenMarks.find(byte) == std::string_view::npos) {
            return false;
        }
    }
    return isBoneyard || blanks < 2;
}

std::size_t FindParagraphEnd(std::string_view text, std::size_t position) {
    std::size_t end = text.find('\n', position);
    while (end != kNowhere) {
        const std::size_t next = std::min(text.find('\n', end + 1), text.size());
        if (IsEmpty(text.substr(end + 1, next - end - 1))) {
            return end;
        }
        end = next == text.size() ? kNowhere : next;
    }
    return text.size();
}

void AddNote(std::string_view marked, std::size_t line, ScriptBuilder& builder) {
    std::string note(marked);
    note.erase(std::remove_if(note.begin(), note.end(),
                              [](char byte) { return kHiddenMarks.find(byte) != std::string_view::npos; }),
               note.end());
    const std::size_t first = std::min(note.find_first_not_of(" \t\n"), note.size());
    builder.AddNote(std::string_view(note).substr(first, note.find_last_not_of(" \t\n") + 1 - first), line);
}

} // namespace

void TakeOutBoneyards(std::string& text, ScriptBuilder& builder) {
    Cutter cutter(text);
    bool isNested = true;
    std::size_t open = text.find("/*");
    for (; open != kNowhere; open = text.find("/*", cutter.Position())) {
        const Boneyard nested = isNested ? FindNestedEnd(text, open) : Boneyard();
        isNested = nested.end != kNowhere;
        const std::size_t end = isNested ? nested.end : FindFirstEnd(text, open);
        if (end == kNowhere) {
            builder.Warn(WarningKind::Unclosed, cutter.LineAt(open), "the boneyard is never closed; it stays text");
            break;
        }
        if (isNested && nested.holdsAnother) {
            builder.Warn(WarningKind::Assumed, cutter.LineAt(open),
                         "a boneyard within the boneyard: all of it is left out");
        }
        cutter.KeepUpTo(open);
        cutter.LeaveOutUpTo(end, kBoneyardMark);
    }
    cutter.KeepTheRest();
}

void TakeOutNotes(std::string& text, ScriptBuilder& builder) {
    Cutter cutter(text);
    std::size_t paragraphEnd = 0;
    std::size_t open = text.find("[[");
    for (; open != kNowhere; open = text.find("[[", cutter.Position())) {
        paragraphEnd = open < paragraphEnd ? paragraphEnd : FindParagraphEnd(text, open);
        const std::size_t inside = open + kMark;
        const std::size_t close = std::string_view(text).substr(0, paragraphEnd).find("]]", inside);
        if (close == kNowhere) {
            builder.Warn(WarningKind::Unclosed, cutter.LineAt(open),
                         "the note is not closed before an empty line; it stays text");
            cutter.KeepUpTo(paragraphEnd);
            continue;
        }
        AddNote(std::string_view(text).substr(inside, close - inside), cutter.LineAt(open), builder);
        cutter.KeepUpTo(open);
        cutter.LeaveOutUpTo(close + kMark, kNoteMark);
    }
    cutter.KeepTheRest();
}

} // namespace zonscreenplay::fountain

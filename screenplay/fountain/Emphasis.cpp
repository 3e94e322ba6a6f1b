#include "fountain/Emphasis.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fountain/Characters.h"

namespace zonscreenplay::fountain {

namespace {

constexpr char kEscape = '\\';

// Where the next star, underline or backslash stands; npos when none does.
std::size_t FindMark(std::string_view line, std::size_t position) {
    while (position < line.size()) {
        const char byte = line[position];
        if (byte == '*' || byte == '_' || byte == kEscape) {
            return position;
        }
        ++position;
    }
    return std::string_view::npos;
}

// Most lines have none: three searches for a byte cost less than one for any of three.
bool HasMark(std::string_view line) {
    return line.find('*') != std::string_view::npos || line.find('_') != std::string_view::npos ||
           line.find(kEscape) != std::string_view::npos;
}

// Equal marks that stand together.
struct Run {
    std::size_t position;
    std::uint32_t length;
    std::uint32_t left; // not yet taken as emphasis
    char mark;
    bool canOpen;
    bool canClose;
};

bool IsEscapeAt(std::string_view line, std::size_t position) {
    return line[position] == kEscape && position + 1 < line.size() && IsEscapable(line[position + 1]);
}

Run MakeRun(std::string_view line, std::size_t position, std::size_t end) {
    std::string_view rest = line.substr(end);
    const std::int32_t before = position == 0 ? ' ' : LastCharacter(line.substr(0, position));
    const std::int32_t after = rest.empty() ? ' ' : TakeCharacter(rest);
    const bool isPunctuationBefore = IsPunctuation(before);
    const bool isPunctuationAfter = IsPunctuation(after);
    const bool leansRight = !IsSpace(after) && (!isPunctuationAfter || IsSpace(before) || isPunctuationBefore);
    const bool leansLeft = !IsSpace(before) && (!isPunctuationBefore || IsSpace(after) || isPunctuationAfter);
    const bool isWithinWords = line[position] == '_';
    const auto length = static_cast<std::uint32_t>(end - position);
    return {position,
            length,
            length,
            line[position],
            leansRight && (!isWithinWords || !leansLeft || isPunctuationBefore),
            leansLeft && (!isWithinWords || !leansRight || isPunctuationAfter)};
}

std::vector<Run> FindRuns(std::string_view line) {
    std::vector<Run> runs;
    std::size_t position = FindMark(line, 0);
    while (position != std::string_view::npos) {
        std::size_t end = position + 1;
        if (line[position] == kEscape) {
            end += IsEscapeAt(line, position) ? 1 : 0;
        } else {
            end = std::min(line.find_first_not_of(line[position], end), line.size());
            runs.push_back(MakeRun(line, position, end));
        }
        position = FindMark(line, end);
    }
    return runs;
}

// The runs of one mark that may still open, and how far down it is worth looking: where a closing run found nothing, the next of its
// kind will not either. That keeps the work linear.
class Openers {
public:
    explicit Openers(std::vector<Run>& runs) : mRuns(runs) {}

    void Push(std::size_t run) { mStack.push_back(run); }

    // Takes marks off a closing run and what it closes, until nothing is left or nothing matches.
    void CloseWith(Run& closer) {
        std::size_t& bottom = Bottom(closer);
        while (closer.left > 0) {
            std::size_t depth = mStack.size();
            while (depth > bottom && !Matches(mRuns[mStack[depth - 1]], closer)) {
                --depth;
            }
            if (depth <= bottom) {
                bottom = mStack.size();
                return;
            }
            Run& opener = mRuns[mStack[depth - 1]];
            const std::uint32_t taken = std::min<std::uint32_t>({2, opener.left, closer.left});
            opener.left -= taken;
            closer.left -= taken;
            CutTo(opener.left > 0 ? depth : depth - 1);
        }
    }

private:
    // Marks that could do either pair up only where no three of them would remain ambiguous.
    static bool Matches(const Run& opener, const Run& closer) {
        const bool isAmbiguous = closer.canOpen || opener.canClose;
        const bool makesThree =
            (opener.length + closer.length) % 3 == 0 && (opener.length % 3 != 0 || closer.length % 3 != 0);
        return !(isAmbiguous && makesThree);
    }

    std::size_t& Bottom(const Run& closer) { return mBottoms[(closer.canOpen ? 0U : 3U) + closer.length % 3]; }

    void CutTo(std::size_t depth) {
        mStack.resize(depth);
        for (std::size_t& bottom : mBottoms) {
            bottom = std::min(bottom, depth);
        }
    }

    std::vector<Run>& mRuns;
    std::vector<std::size_t> mStack;
    std::array<std::size_t, 6> mBottoms{};
};

// On purpose: underlining may overlap the rest, unlike in Markdown, where "_**both_**" would keep two stars. It is a
// property of its own, and writers close it where it suits them. Held by the tests Fountain, row Overlap.
std::vector<Run> FindEmphasis(std::string_view line) {
    std::vector<Run> runs = FindRuns(line);
    Openers stars(runs);
    Openers underlines(runs);
    for (std::size_t index = 0; index < runs.size(); ++index) {
        Openers& openers = runs[index].mark == '*' ? stars : underlines;
        if (runs[index].canClose) {
            openers.CloseWith(runs[index]);
        }
        if (runs[index].canOpen && runs[index].left > 0) {
            openers.Push(index);
        }
    }
    return runs;
}

void AppendWithoutEscapes(std::string_view text, std::string& plain) {
    std::size_t escape = text.find(kEscape);
    while (escape != std::string_view::npos) {
        const bool isEscape = IsEscapeAt(text, escape);
        plain += text.substr(0, isEscape ? escape : escape + 1);
        text.remove_prefix(escape + 1);
        escape = text.find(kEscape, isEscape ? 1 : 0); // an escaped backslash escapes nothing
    }
    plain += text;
}

template <typename Append>
void AppendBetweenRuns(std::string_view line, const Append& append, std::string& plain) {
    std::size_t done = 0;
    for (const Run& run : FindEmphasis(line)) {
        append(line.substr(done, run.position - done), plain);
        plain.append(run.left, run.mark);
        done = run.position + run.length;
    }
    append(line.substr(done), plain);
}

} // namespace

void AppendPlainText(std::string_view line, std::string& plain) {
    if (!HasMark(line)) {
        plain += WithoutTrailingBlanks(line);
        return;
    }
    const std::size_t begin = plain.size();
    AppendBetweenRuns(line, AppendWithoutEscapes, plain);
    plain.resize(begin +
                 WithoutTrailingBlanks(std::string_view(plain).substr(begin)).size()); // marks stood behind them
}

std::string WithoutEmphasis(std::string_view line) {
    std::string text;
    AppendBetweenRuns(
        line, [](std::string_view part, std::string& all) { all += part; }, text);
    return text;
}

bool IsEscaped(std::string_view line, std::size_t position) {
    std::size_t escapes = 0;
    while (escapes < position && line[position - escapes - 1] == kEscape) {
        ++escapes;
    }
    return escapes % 2 == 1;
}

} // namespace zonscreenplay::fountain

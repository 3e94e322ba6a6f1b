#include "match/NameNoise.h"

#include <algorithm>
#include <vector>

#include "match/SlateWords.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

enum class Kind { Always, Date, DateInName, Time, EndsName };

// What begins and ends with whole chunks: # is a digit, @ a letter, % either, _ any one separator, * the rest of a chunk.
struct Shape {
    std::string_view text;
    Kind kind = Kind::Always;
};

// Parted by blanks.
constexpr Shape kShapes[] = {
    // Reels and clips with what cameras set behind them, dates with times, months, episodes, frame sizes, rates, codecs, stops
    {"%%%%%%%%-%%%%-%%%%-%%%%-%%%%%%%%%%%% @###C###_######_R%%%* @###C###_###### @###C###*_CANON @###C###* "
     "@###_C###_####@@ @###_C### @###_########_C### @_####C###_######_######_%%%%* @_####C###_######_%%%%% "
     "@_####C###* ####C###* ##:##:## ########_####* ##_JAN*_* ##_FEB*_* ##_MAR*_* ##_APR*_* ##_MAY*_* ##_JUN*_* "
     "##_JUL*_* ##_AUG*_* ##_SEP*_* ##_OCT*_* ##_NOV*_* ##_DEC*_* S##E##* ####X#### ###X### 1080 1920 2160 3840 4096 "
     "####P* ###P ####I* ##P 23_976 23_98 29_97 59_94 H_26# H26# X26# T#.# F#.# PRORES_###* REC_709 REC709 ###CANON "
     "C#### C####_##",
     Kind::Always},
    {"####-##-##_##_##_## ####-##-##_##_## ####_##_## ##_##_#### ######_#### ######", Kind::Date},
    {"##_##_##", Kind::DateInName},
    {"##_##_##_##", Kind::Time},
    {"@###C###_######_R%%%_### @###C###_######_%%%% @###_C###_%%%%%%_### @###_C###_####%%* @###_C###_%%%%%% "
     "@###_####_R%%%% @###_@###_%%%% @###_@### #_##_##_## ########_##_## S##_E## ####%%",
     Kind::EndsName}};

// One by one, the longer in front of those that they begin with.
std::vector<Shape> SortShapes() {
    std::vector<Shape> shapes;
    for (const Shape& row : kShapes) {
        for (const std::string_view text : WordsOf(row.text)) {
            shapes.push_back({text, row.kind});
        }
    }
    std::stable_sort(shapes.begin(), shapes.end(),
                     [](const Shape& left, const Shape& right) { return left.text.size() > right.text.size(); });
    return shapes;
}

bool IsLetterOrDigit(char c) {
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

bool Fits(char sign, char c) {
    switch (sign) {
    case '#':
        return IsDigit(c);
    case '@':
        return IsLetterOrDigit(c) && !IsDigit(c);
    case '%':
        return IsLetterOrDigit(c);
    case '_':
        return !IsLetterOrDigit(c);
    default:
        return sign == c;
    }
}

// Where the shape ends in the text; npos where it does not fit. The signs in a date or a time are all the same.
std::size_t EndOf(const Shape& shape, std::string_view text, std::size_t at) {
    const bool same = shape.kind == Kind::Date || shape.kind == Kind::DateInName || shape.kind == Kind::Time;
    char first = '\0';
    for (const char sign : shape.text) {
        if (same && sign == '_' && at < text.size() && shape.text.find('-') == std::string_view::npos) {
            if (first != '\0' && text[at] != first) {
                return std::string_view::npos;
            }
            first = text[at];
        }
        if (sign == '*') {
            while (at < text.size() && IsLetterOrDigit(text[at])) {
                ++at;
            }
        } else if (at == text.size() || !Fits(sign, text[at++])) {
            return std::string_view::npos;
        }
    }
    return at == text.size() || !IsLetterOrDigit(text[at]) ? at : std::string_view::npos;
}

bool IsMonthAndDay(std::uint32_t left, std::uint32_t right) {
    return left >= 1 && right >= 1 && std::min(left, right) <= 12 && std::max(left, right) <= 31;
}

bool IsYear(std::uint32_t value) {
    return (value >= 1900 && value < 2100) || (value >= 15 && value < 32);
}

// A year in front or behind; 160424 and 20160424 in one.
bool IsDate(const NameRuns& name, std::size_t run) {
    const std::uint32_t first = name[run].value;
    if (name.Length(run) == 6) {
        return IsYear(first / 10000) && IsMonthAndDay(first / 100 % 100, first % 100);
    }
    const std::uint32_t second = name[run + 1].value;
    const std::uint32_t third = name[run + 2].value;
    return (IsYear(first) && IsMonthAndDay(second, third)) || (IsYear(third) && IsMonthAndDay(first, second));
}

bool IsKind(Kind kind, const NameRuns& name, std::size_t run, std::size_t end) {
    const std::string_view text = name.Whole();
    switch (kind) {
    case Kind::Date:
        return IsDate(name, run);
    case Kind::DateInName: // a name of such numbers alone may be scene, shot and take
        return IsDate(name, run) && (run > 0 || end < text.size());
    case Kind::Time: { // of five pairs the first is a take where something else parts it: 12-02_01_02_03_04
        const bool five = EndOf({"_##"}, text, end) != std::string_view::npos && text[end] == text[end - 3];
        return !five || run == 0 || name.Separator(run) == text.substr(end, 1);
    }
    case Kind::EndsName:
        return end == text.size();
    case Kind::Always:
        return true;
    }
    return false;
}

bool IsAfterSceneWord(const NameRuns& name, std::size_t run) {
    return run > 0 && !name[run - 1].digits && MeaningOf(name.Text(run - 1)) == SlateWord::Scene;
}

// The run behind the noise that begins here; the same run where there is none.
std::size_t EndOfNoise(const NameRuns& name, std::size_t run) {
    static const std::vector<Shape> shapes = SortShapes();
    for (const Shape& shape : shapes) {
        const char c = name.Whole()[name[run].begin];
        if (!Fits(shape.text.front(), c)) {
            continue;
        }
        const std::size_t end = EndOf(shape, name.Whole(), name[run].begin);
        if (end != std::string_view::npos && IsKind(shape.kind, name, run, end)) {
            while (run < name.size() && name[run].begin < end) {
                ++run;
            }
            break;
        }
    }
    return run;
}

// 9AABFE6E: what no person writes.
bool IsHexadecimal(const NameRuns& name, std::size_t run) {
    const std::size_t end = name.ChunkEnd(run);
    const std::string_view text = name.Whole().substr(name[run].begin, name[end - 1].end - name[run].begin);
    const auto letters = std::count_if(text.begin(), text.end(), [](char c) { return !IsDigit(c); });
    return text.size() >= 8 && text.size() % 4 == 0 && letters > 1 && end > run + 2 &&
           text.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

// GX010012, P1000012: what a camera counts with. More digits than a scene or a take has are noise in any case.
bool IsCounter(const NameRuns& name, std::size_t run) {
    const bool letters = !name[run].digits && name.Length(run) <= 3 && run + 1 < name.size() && name[run + 1].glued;
    return letters && name.Length(run + 1) >= 4 && MeaningOf(name.Text(run)) == SlateWord::Unknown &&
           name.Text(run).front() != 'S';
}

} // namespace

void MarkNoise(NameRuns& name) {
    for (std::size_t run = 0; run < name.size();) {
        const bool taken =
            IsAfterSceneWord(name, run) || name[run].joined || (run + 1 < name.size() && name[run + 1].joined);
        std::size_t end = taken ? run : EndOfNoise(name, run);
        end = !taken && end == run && (IsCounter(name, run) || IsHexadecimal(name, run)) ? name.ChunkEnd(run) : end;
        const std::size_t next = end > run ? end : name.ChunkEnd(run);
        for (; run < next; ++run) {
            name[run].noise = run < end;
        }
    }
}

} // namespace zonstory

#include "match/NoiseKinds.h"

#include <algorithm>

#include "match/RunTests.h"

namespace zonstory {

namespace {

bool IsYear(std::uint32_t value) {
    return value >= 1900 && value < 2100;
}

bool IsMonthAndDay(std::uint32_t left, std::uint32_t right) {
    return left >= 1 && right >= 1 && std::min(left, right) <= 12 && std::max(left, right) <= 31;
}

bool AreOneSeparatorApart(const NameRuns& name, std::size_t first) {
    const std::string_view separator = name.Separator(first + 1);
    return separator.size() == 1 && separator == name.Separator(first + 2);
}

bool IsDateWithYear(const NameRuns& name, std::size_t run) {
    const NameRun& a = name[run];
    const NameRun& b = name[run + 1];
    const NameRun& c = name[run + 2];
    return (name.Length(run) == 4 && IsYear(a.value) && IsMonthAndDay(b.value, c.value)) ||
           (name.Length(run + 2) == 4 && IsYear(c.value) && IsMonthAndDay(a.value, b.value));
}

bool AreTwoDigitsEach(const NameRuns& name, std::size_t run) {
    return name.Length(run) == 2 && name.Length(run + 1) == 2 && name.Length(run + 2) == 2;
}

// "2024-01-31_12-30": two pairs of digits behind a date are a time.
void MarkTimeBehindDate(NameRuns& name, std::size_t run) {
    if (run + 1 < name.size() && IsLoneNumber(name, run) && IsLoneNumber(name, run + 1) && name.Length(run) == 2 &&
        name.Length(run + 1) == 2 && name[run].value < 24 && name[run + 1].value < 60) {
        name.MarkNoise(run, run + 2);
    }
}

// A lone digit in front of three pairs is a timecode's hour; four pairs are one already.
void MarkHour(NameRuns& name, std::size_t run) {
    const bool fourth = run + 3 < name.size() && IsLoneNumber(name, run + 3) && name.Length(run + 3) == 2 &&
                        name.Separator(run + 3) == name.Separator(run + 2);
    if (run > 0 && !fourth && IsLoneNumber(name, run - 1) && name.Length(run - 1) == 1 &&
        name.Separator(run) == name.Separator(run + 1)) {
        name.MarkNoise(run - 1, run);
    }
}

bool IsPairOfDigits(const NameRuns& name, std::size_t run) {
    return IsLoneNumber(name, run) && name.Length(run) == 2;
}

// "12-02_01_02_03_04": of five pairs the first, which something else separates, is a take and not of the timecode.
bool IsBeforeTimecode(const NameRuns& name, std::size_t run) {
    const std::string_view separator = name.Separator(run + 1);
    const bool isTake = run > 0 && !name[run].glued && name.Separator(run) != separator;
    if (!isTake) {
        return false;
    }
    std::size_t end = run + 1;
    while (end <= run + 5 && IsPairOfDigits(name, end) && name.Separator(end) == separator) {
        ++end;
    }
    return end == run + 5;
}

void MarkTriples(NameRuns& name) {
    for (std::size_t run = 0; run + 2 < name.size(); ++run) {
        if (!IsLoneNumber(name, run) || !IsLoneNumber(name, run + 1) || !IsLoneNumber(name, run + 2) ||
            !AreOneSeparatorApart(name, run)) {
            continue;
        }
        if (IsDateWithYear(name, run)) {
            name.MarkNoise(run, run + 3);
            MarkTimeBehindDate(name, run + 3);
        } else if (AreTwoDigitsEach(name, run) && !IsBeforeTimecode(name, run)) {
            name.MarkNoise(run, run + 3);
            MarkHour(name, run);
        }
    }
}

// 20240131, 160424, 00012: more digits than a scene has, alone or joined by the T of a time stamp.
void MarkLongNumbers(NameRuns& name) {
    for (std::size_t run = 0; run < name.size(); ++run) {
        const bool alone =
            name.Alone(run) || (IsGlued(name, run + 1) && IsWord(name, run + 1, "T") && !name[run].glued);
        if (IsDigits(name, run) && name.Length(run) > kLongestNumber && alone) {
            name.MarkNoise(run, run + 1);
            MarkTimeBehindDate(name, run + 1);
        }
    }
}

void MarkColons(NameRuns& name) {
    for (std::size_t run = 1; run < name.size(); ++run) {
        const std::string_view separator = name.Separator(run);
        if ((separator == ":" || separator == ";") && IsDigits(name, run - 1) && IsDigits(name, run)) {
            name.MarkNoise(run - 1, run + 1);
        }
    }
}

// 31 JAN 2024, Jan-31-24, 31JAN24.
void MarkMonths(NameRuns& name) {
    for (std::size_t run = 0; run < name.size(); ++run) {
        if (!IsLetters(name, run) || MeaningOf(name.Text(run)) != SlateWord::Month) {
            continue;
        }
        if (run > 0 && IsDigits(name, run - 1, 1, 4) && !name[run - 1].glued) {
            name.MarkNoise(run - 1, run + 1);
        }
        for (std::size_t at = run + 1; at < run + 3 && IsDigits(name, at, 1, 4) && !IsGlued(name, at + 1); ++at) {
            name.MarkNoise(at, at + 1);
        }
    }
}

// S01E02.
void MarkEpisodes(NameRuns& name) {
    for (std::size_t run = 0; run + 3 < name.size(); ++run) {
        const bool season = IsWord(name, run, "S") && IsGlued(name, run + 1) && IsDigits(name, run + 1);
        const bool episode = (IsWord(name, run + 2, "E") || IsWord(name, run + 2, "EP")) && IsDigits(name, run + 3) &&
                             IsGlued(name, run + 3);
        if (season && episode && !name[run].glued) {
            name.MarkNoise(run, name.ChunkEnd(run + 3));
        }
    }
}

} // namespace

void MarkDatesAndTimes(NameRuns& name) {
    MarkEpisodes(name);
    MarkMonths(name);
    MarkTriples(name);
    MarkLongNumbers(name);
    MarkColons(name);
}

} // namespace zonstory

#include "match/NameNoise.h"

#include <algorithm>

#include "match/SlateWords.h"

namespace zonstory {

namespace {

constexpr std::size_t kLongestNumber = 4; ///< Of digits that can be a scene or a take.

bool IsDigits(const NameRuns& name, std::size_t run) {
    return run < name.size() && name[run].digits;
}

bool IsDigits(const NameRuns& name, std::size_t run, std::size_t least, std::size_t most) {
    return IsDigits(name, run) && name.Length(run) >= least && name.Length(run) <= most;
}

bool IsLetters(const NameRuns& name, std::size_t run) {
    return run < name.size() && !name[run].digits;
}

bool IsWord(const NameRuns& name, std::size_t run, std::string_view word) {
    return IsLetters(name, run) && name.Text(run) == word;
}

bool IsGlued(const NameRuns& name, std::size_t run) {
    return run < name.size() && name[run].glued;
}

bool IsLoneNumber(const NameRuns& name, std::size_t run) {
    return IsDigits(name, run) && name.Alone(run);
}

// ---- Camera clips -----------------------------------------------------------------------------------------------------

// C0012, the clip of a reel; the digits are the run after.
bool IsClipCounter(const NameRuns& name, std::size_t run) {
    return IsWord(name, run, "C") && IsGlued(name, run + 1) && IsDigits(name, run + 1, 3, 4);
}

// A007C006 and what is glued to it.
bool IsReelAndClip(const NameRuns& name, std::size_t run) {
    return IsLetters(name, run) && name.Length(run) <= 2 && IsGlued(name, run + 1) && IsDigits(name, run + 1, 3, 4) &&
           IsGlued(name, run + 2) && IsClipCounter(name, run + 2);
}

// A_0001C012: the camera's letter stands apart.
bool IsNumberedReelAndClip(const NameRuns& name, std::size_t run) {
    return IsDigits(name, run, 3, 4) && !IsGlued(name, run) && IsGlued(name, run + 1) && IsClipCounter(name, run + 1);
}

// A001_C002, and A001_01311200_C012 with the time between. The end of the last chunk, or 0.
std::size_t EndOfReelInPieces(const NameRuns& name, std::size_t run) {
    const bool reel = IsLetters(name, run) && name.Length(run) <= 2 && IsGlued(name, run + 1) &&
                      IsDigits(name, run + 1, 3, 4) && name.ChunkEnd(run) == run + 2;
    if (!reel) {
        return 0;
    }
    const std::size_t clip = IsDigits(name, run + 2, 6, 8) && name.Alone(run + 2) ? run + 3 : run + 2;
    return IsClipCounter(name, clip) && !IsGlued(name, clip) ? name.ChunkEnd(clip) : 0;
}

std::size_t EndOfReel(const NameRuns& name, std::size_t run) {
    if (IsReelAndClip(name, run) || IsNumberedReelAndClip(name, run)) {
        return name.ChunkEnd(run);
    }
    return EndOfReelInPieces(name, run);
}

std::size_t ChunkLength(const NameRuns& name, std::size_t first, std::size_t end) {
    return name[end - 1].end - name[first].begin;
}

// What cameras set behind reel, clip and date: R28L, 0101AB, a1B2C. `dates` counts the groups of digits passed before.
bool IsReelTail(const NameRuns& name, std::size_t first, std::size_t end, int dates) {
    const std::size_t length = ChunkLength(name, first, end);
    const bool mixed = end - first > 1;
    if (name[first].digits) {
        return mixed && ((length == 6 && name.Length(first) >= 3) || (length == 8 && name.Length(first) == 6));
    }
    return (length == 4 && name.Text(first).front() == 'R' && (mixed || dates > 0)) ||
           (length == 5 && mixed && dates > 1) || name.Text(first) == "CANON";
}

bool IsTakeAt(const NameRuns& name, std::size_t run) {
    return IsDigits(name, run) || (IsLetters(name, run) && MeaningOf(name.Text(run)) == SlateWord::Take);
}

// The segment of a long take, _001, where no take follows that would make a slate of it.
bool IsReelSegment(const NameRuns& name, std::size_t run) {
    return IsLoneNumber(name, run) && !IsTakeAt(name, run + 1);
}

std::size_t EndOfReelTail(const NameRuns& name, std::size_t run) {
    int dates = 0;
    while (IsLoneNumber(name, run) && name.Length(run) > kLongestNumber) {
        ++dates;
        ++run;
    }
    if (run < name.size() && IsReelTail(name, run, name.ChunkEnd(run), dates)) {
        run = name.ChunkEnd(run);
    }
    return IsReelSegment(name, run) ? run + 1 : run;
}

void MarkReels(NameRuns& name) {
    for (std::size_t run = 0; run < name.size();) {
        const std::size_t end = IsGlued(name, run) ? 0 : EndOfReel(name, run);
        if (end == 0) {
            ++run;
            continue;
        }
        const std::size_t tailEnd = EndOfReelTail(name, end);
        const bool cameraLetter = run > 0 && name[run].digits && name.Alone(run - 1) && name.Length(run - 1) == 1;
        name.MarkNoise(cameraLetter ? run - 1 : run, tailEnd, true);
        run = tailEnd;
    }
}

// Letters that belong to slates even where a counter follows.
bool BelongsToSlate(std::string_view letters) {
    const SlateWord word = MeaningOf(letters);
    return word == SlateWord::Scene || word == SlateWord::Take || word == SlateWord::SceneLetter ||
           word == SlateWord::Slate || (letters.size() == 2 && letters.front() == 'S');
}

// P1000123, GX010045, AA0012: the names cameras count with. C0012 may be the scene C12 where a take follows, and is left
// to the reader of slates.
void MarkCounters(NameRuns& name) {
    for (std::size_t run = 0; run + 1 < name.size(); ++run) {
        const bool letters = !name[run].glued && IsLetters(name, run) && name.Length(run) <= 2;
        const bool counter = letters && name[run + 1].glued && name[run + 1].digits && name.Length(run + 1) >= 4;
        const bool padded = counter && name.Length(run + 1) == 4 && name.StartsWithZero(run + 1);
        if (counter && !BelongsToSlate(name.Text(run)) && !(padded && name.Length(run) == 1)) {
            name.MarkNoise(run, name.ChunkEnd(run), true);
        }
    }
}

// ---- Dates and times --------------------------------------------------------------------------------------------------

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

void MarkTriples(NameRuns& name) {
    for (std::size_t run = 0; run + 2 < name.size(); ++run) {
        if (!IsLoneNumber(name, run) || !IsLoneNumber(name, run + 1) || !IsLoneNumber(name, run + 2) ||
            !AreOneSeparatorApart(name, run)) {
            continue;
        }
        if (IsDateWithYear(name, run)) {
            name.MarkNoise(run, run + 3);
            MarkTimeBehindDate(name, run + 3);
        } else if (AreTwoDigitsEach(name, run)) {
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

// ---- Pictures and sound -----------------------------------------------------------------------------------------------

// Wider and higher than scenes are counted; 720 and its like are left to the reader of slates.
bool IsFrameSize(std::uint32_t value) {
    constexpr std::uint32_t kSizes[] = {1080, 1280, 1440, 1920, 2048, 2160, 2560, 2880, 3072,
                                        3200, 3840, 4096, 4320, 4608, 5120, 6144, 7680, 8192};
    return std::binary_search(std::begin(kSizes), std::end(kSizes), value);
}

bool IsProgressiveOrInterlaced(const NameRuns& name, std::size_t run) {
    return IsWord(name, run, "P") || IsWord(name, run, "I");
}

bool IsAfterSceneWord(const NameRuns& name, std::size_t run) {
    return run > 0 && IsLetters(name, run - 1) && MeaningOf(name.Text(run - 1)) == SlateWord::Scene;
}

void MarkFrameSizes(NameRuns& name) {
    for (std::size_t run = 0; run < name.size(); ++run) {
        if (!IsDigits(name, run) || name[run].glued) {
            continue;
        }
        const bool times = IsGlued(name, run + 1) && IsWord(name, run + 1, "X") && IsGlued(name, run + 2);
        const bool lines = IsGlued(name, run + 1) && IsProgressiveOrInterlaced(name, run + 1) && name[run].value >= 480;
        if (times || lines || (name.Alone(run) && IsFrameSize(name[run].value) && !IsAfterSceneWord(name, run))) {
            name.MarkNoise(run, name.ChunkEnd(run));
        }
    }
}

// 23.976, 5.1, and T2.8 of a lens.
void MarkDecimals(NameRuns& name) {
    for (std::size_t run = 1; run < name.size(); ++run) {
        if (name.Separator(run) != "." || !IsDigits(name, run) || !IsDigits(name, run - 1)) {
            continue;
        }
        const bool lens = name[run - 1].glued && run >= 2 && name.Length(run - 2) == 1 &&
                          (IsWord(name, run - 2, "T") || IsWord(name, run - 2, "F"));
        if (lens) {
            name.MarkNoise(run - 2, run + 1);
        } else if (!name[run - 1].glued) {
            name.MarkNoise(run - 1, run + 1);
        }
    }
}

// 23_976, 2-39, 5_1 mix: decimals in names that avoid dots. Takes do not go that high.
void MarkDecimalPairs(NameRuns& name) {
    struct Pair {
        std::uint32_t whole, fraction;
    };
    constexpr Pair kPairs[] = {{1, 33}, {1, 66},   {1, 78},  {1, 85},  {2, 35},   {2, 39},
                               {2, 40}, {23, 976}, {23, 98}, {29, 97}, {47, 952}, {59, 94}};
    for (std::size_t run = 0; run + 1 < name.size(); ++run) {
        if (!IsLoneNumber(name, run) || !IsDigits(name, run + 1) || IsGlued(name, run + 1) ||
            name.Separator(run + 1).size() != 1) {
            continue;
        }
        const Pair pair = {name[run].value, name[run + 1].value};
        const bool rate = std::any_of(std::begin(kPairs), std::end(kPairs), [&](const Pair& one) {
            return one.whole == pair.whole && one.fraction == pair.fraction;
        });
        const bool channels = (pair.whole == 5 || pair.whole == 7) && pair.fraction == 1 && run + 2 < name.size() &&
                              (IsWord(name, run + 2, "MIX") || IsWord(name, run + 2, "SURROUND"));
        if (rate || channels) {
            name.MarkNoise(run, name.ChunkEnd(run + 1));
        }
    }
}

// H264, H.264, x265: the letter alone makes the codec.
void MarkCodecs(NameRuns& name) {
    for (std::size_t run = 1; run < name.size(); ++run) {
        const bool codec = IsDigits(name, run) && name[run].value >= 262 && name[run].value <= 266 &&
                           (IsWord(name, run - 1, "H") || IsWord(name, run - 1, "X")) && name.Separator(run).size() < 2;
        if (codec) {
            name.MarkNoise(run - 1, run + 1);
        }
    }
}

// ---- Words that count -------------------------------------------------------------------------------------------------

// The number behind the word; with a letter ("Roll 12A") where the word counts such.
void MarkCounted(NameRuns& name, std::size_t word, bool withLetter) {
    const std::size_t counted = word + 1;
    if (!IsDigits(name, counted) || name[counted].noise) {
        return;
    }
    const std::size_t end = name.ChunkEnd(counted);
    const bool letterBehind = withLetter && end == counted + 2 && name.Length(counted + 1) == 1;
    if (end == counted + 1 || letterBehind) {
        name.MarkNoise(counted, end);
    }
}

// 422 behind ProRes, 709 behind Rec, 36 behind DNxHD; and 422HQ.
void MarkFormat(NameRuns& name, std::size_t word) {
    constexpr std::uint32_t kNumbers[] = {2,   4,   36,  50,  100, 115, 120,  145,  175, 185,
                                          220, 264, 265, 422, 444, 709, 2020, 2100, 4444};
    const std::size_t next = word + 1;
    if (!name[word].glued && IsDigits(name, next) && name.ChunkEnd(next) == next + 1 &&
        std::binary_search(std::begin(kNumbers), std::end(kNumbers), name[next].value)) {
        name.MarkNoise(next, next + 1);
    }
    if (name[word].glued && name.ChunkEnd(word) == word + 1 && !name[word - 1].glued) {
        name.MarkNoise(word - 1, word + 1);
    }
}

// "24 fps", "10bit", "1st". Single letters are not here: 12D is a set-up.
void MarkMeasured(NameRuns& name, std::size_t unit) {
    if (unit > 0 && IsDigits(name, unit - 1) && (unit == 1 || !name[unit - 1].glued)) {
        name.MarkNoise(unit - 1, unit + 1);
    }
}

// The camera's number stands behind ("Cam 2"), unless its letter stands in front: "A cam 12-3" is a slate.
void MarkCamera(NameRuns& name, std::size_t word) {
    const bool letterInFront =
        word > 0 && IsLetters(name, word - 1) && name.Alone(word - 1) && name.Length(word - 1) == 1;
    if (!letterInFront || !IsTakeAt(name, word + 2)) {
        MarkCounted(name, word, !letterInFront);
    }
}

void MarkWords(NameRuns& name) {
    for (std::size_t run = 0; run < name.size(); ++run) {
        if (name[run].noise || !IsLetters(name, run)) {
            continue;
        }
        const bool endsChunk = name.ChunkEnd(run) == run + 1;
        switch (MeaningOf(name.Text(run))) {
        case SlateWord::Counter:
        case SlateWord::Shot:
        case SlateWord::File:
            if (!name[run].glued) { // 12ACT3 is set-up AC, take 3
                MarkCounted(name, run, MeaningOf(name.Text(run)) != SlateWord::File);
            } else if (endsChunk && name.Length(run) > 1) { // 2ch
                MarkMeasured(name, run);
            }
            break;
        case SlateWord::Format:
            MarkFormat(name, run);
            break;
        case SlateWord::Camera:
            MarkCamera(name, run);
            break;
        case SlateWord::Unit:
            if (endsChunk) {
                MarkMeasured(name, run);
            }
            break;
        default:
            break;
        }
    }
}

} // namespace

void MarkNoise(NameRuns& name) {
    MarkReels(name);
    MarkCounters(name);
    MarkEpisodes(name);
    MarkMonths(name);
    MarkTriples(name);
    MarkLongNumbers(name);
    MarkColons(name);
    MarkDecimals(name);
    MarkDecimalPairs(name);
    MarkFrameSizes(name);
    MarkCodecs(name);
    MarkWords(name);
}

} // namespace zonstory

#include "match/NoiseKinds.h"

#include "match/RunTests.h"

namespace zonstory {

namespace {

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

} // namespace

void MarkReelNames(NameRuns& name) {
    MarkReels(name);
    MarkCounters(name);
}

} // namespace zonstory

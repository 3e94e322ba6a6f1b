#include "match/NoiseKinds.h"

#include <algorithm>
#include <iterator>

#include "match/RunTests.h"

namespace zonstory {

namespace {

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

} // namespace

void MarkCountedWords(NameRuns& name) {
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

} // namespace zonstory

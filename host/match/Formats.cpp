#include "match/NoiseKinds.h"

#include <algorithm>
#include <iterator>

#include "match/RunTests.h"

namespace zonstory {

namespace {

bool IsHeight(std::uint32_t value) {
    constexpr std::uint32_t kHeights[] = {480, 486, 540, 576, 720, 1080, 1152, 1440, 2160, 4320};
    return std::binary_search(std::begin(kHeights), std::end(kHeights), value);
}

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
        const bool lines =
            IsGlued(name, run + 1) && IsProgressiveOrInterlaced(name, run + 1) && IsHeight(name[run].value);
        const bool size = name.Alone(run) && IsFrameSize(name[run].value);
        if (times || ((lines || size) && !IsAfterSceneWord(name, run))) {
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

} // namespace

void MarkFormats(NameRuns& name) {
    MarkDecimals(name);
    MarkDecimalPairs(name);
    MarkFrameSizes(name);
    MarkCodecs(name);
}

} // namespace zonstory

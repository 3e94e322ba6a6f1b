#pragma once

#include <string_view>

namespace zonstory {

/// What a word means on a slate or in a clip's name, as far as it tells what the number beside it is.
enum class SlateWord {
    Unknown,
    Scene,       ///< Sc, Scn, Scene: the number after it is the scene.
    SceneLetter, ///< S alone: a scene where a take goes with it, else a season, a shot, a side.
    Slate,       ///< Slate, Sl: the number after it is what the clapperboard says.
    Take,        ///< T, Tk, Take.
    Shot,        ///< Shot, Set-up, Einstellung, Plan: the number after it is below the scene.
    Remark,      ///< PU, MOS, WT, wide: goes with a slate; a number after it counts pick-ups or wild tracks.
    Camera,      ///< Cam, Camera: a letter or number beside it is the camera.
    Counter,     ///< Roll, card, day, episode: the number after it is not a scene, with or without a letter.
    File,        ///< Clip, MVI, DSC: counts files.
    Format,      ///< ProRes, UHD: some numbers after it belong to it.
    Unit,        ///< fps, bit, mm: the number before it is not a scene.
    Month,
    Joiner,     ///< and, to: names a second scene.
    NumberSign, ///< No, Nr: between a scene word and its number.
};

/// @param word  In capitals without accents, as NameRuns folds it.
SlateWord MeaningOf(std::string_view word);

/// Whether these letters can be a set-up: one or two, never I or O, which crews leave out because they read as 1 and 0.
bool IsSetUp(std::string_view letters);

} // namespace zonstory

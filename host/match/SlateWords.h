#pragma once

#include <string_view>

namespace zonstory {

/// What a word means on a slate or in a clip's name, as far as it tells what the number beside it is.
enum class SlateWord {
    Unknown,
    Scene,      ///< Sc, Scene, Szene, Escena: the number after it is the scene.
    Scenes,     ///< Scenes: two numbers after it are two scenes.
    Sequence,   ///< S, Seq: a scene where a shot or a take goes with it, else a season, a timeline, a size.
    Slate,      ///< Slate, Klappe: the number after it is what the clapperboard says.
    Shot,       ///< Shot, Einstellung, Plan, Plano, Inquadratura: the number after it is below the scene.
    Take,       ///< T, Take, Prise, Toma, Ciak.
    Counter,    ///< Roll, card, day, episode, camera: the number after it is no scene, with or without a letter.
    Remark,     ///< PU, MOS, wide, Acam: goes with a slate; a number glued to it counts pick-ups.
    Unit,       ///< fps, bit, mm: the number before it is no scene.
    Joiner,     ///< and, to: names a second scene.
    NumberSign, ///< No, Nr: between a word and its number.
    Against,    ///< Trailer, drone, interview, song: numbers after it count those.
};

/// @param word  In capitals without accents, as NameRuns folds it.
SlateWord MeaningOf(std::string_view word);

/// Whether these letters can be a set-up: one or two, never I or O, which crews leave out because they read as 1 and 0.
bool IsSetUp(std::string_view letters);

} // namespace zonstory

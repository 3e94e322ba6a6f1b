#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "match/Confidence.h"

namespace zonstory {

/// How a production numbers its slates.
enum class SlateStyle {
    Scene, ///< By scene, set-up letter and take, as in the US: 12A-3.
    Continuous, ///< One after another through the shoot, as in the UK: a number alone is a slate, and only a log knows its scene.
};

/// What in a text made a number a scene; Describe() goes by their order.
enum class SlateRule {
    SceneWord,         ///< "Sc12", "Scene 12"
    SceneLetter,       ///< "S12 T3"
    SlateWord,         ///< "Slate 12A"
    NumberAndTakeWord, ///< "12A_T03", "12 take 3"
    SetUpAndTake,      ///< "12A-3", "A12 3"
    NumberAndTake,     ///< "12-3"
    NumberAlone,       ///< "12A", "012": nothing else is there
    AmongWords,        ///< "GARDEN 12"
    GivenPattern,      ///< The pattern that the user gave
    Taught,            ///< A number that is the scene wherever a log, metadata or a folder tells
    WholeField,        ///< A field for scene numbers that says "12A" or "PROLOGUE"
};

/// How a reading stands to the others of the same text.
enum class Standing {
    Main,  ///< The text says this scene.
    Rival, ///< The text could also mean this scene; counts where the story has it.
};

/// One scene that a text may mean.
struct SlateReading {
    std::string
        scene; ///< As SceneNumbers takes it: capitals, no zeros in front, set-up letters still on: "12A", "A32B".
    std::string take; ///< Digits without zeros in front; empty where none is given.
    SlateRule rule = SlateRule::AmongWords;
    Confidence confidence = Confidence::None;
    Standing standing = Standing::Main;
    bool exactOnly = false;  ///< Only a story number that is just so; no letter of it is a set-up.
    std::uint32_t place = 0; ///< Readings of one number in the text share it.

    bool operator==(const SlateReading&) const = default;
};

/// The scenes that a field for scene numbers may mean, of a log or of metadata. Nothing is a date or a format there.
std::vector<SlateReading> ReadSceneField(std::string_view field);

/// A clip's slate as one word, "123" with take "4" for "Slate 123 take 4.mov"; what a log of continuous slates is asked
/// for. Empty where the name has none or more than one.
struct SlateNumber {
    std::string slate;
    std::string take;
};
SlateNumber ReadSlateNumber(std::string_view fileName);

/// A file's name without a media extension; unchanged when it has none that is known.
std::string_view WithoutMediaExtension(std::string_view fileName);

/// The rule in words for people: "a scene word".
std::string_view Describe(SlateRule rule);

} // namespace zonstory

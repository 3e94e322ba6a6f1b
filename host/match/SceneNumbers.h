#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zonstory {

/// A scene number as it is compared: capitals, no zeros in front, no words or signs around it, letters next to their
/// number ("Sc. 012-a" is "12A") and a dot between numbers ("12-1" is "12.1"). Empty for text without letters or digits.
std::string CanonicalSceneNumber(std::string_view text);

/// The numbers of a story's scenes, found at once whatever their count.
class SceneNumbers {
public:
    /// @param numbers  Each scene's number as the story writes it, UTF-8, in the order of the story; empty where a scene
    ///                 has none, which then no clip can name.
    explicit SceneNumbers(std::vector<std::string> numbers);

    std::size_t size() const { return mNumbers.size(); }

    /// The number as the story writes it.
    const std::string& Number(std::size_t scene) const { return mNumbers[scene]; }

    /// Whether some number is made of several, "2.28"; and whether this one is the story's.
    bool HasParts() const { return mHasParts; }
    bool Has(std::string_view scene) const { return Exact(scene) != nullptr; }

    enum class Fit {
        None,          ///< The story has no such scene.
        Exact,         ///< The number is one of the story's.
        SetUpStripped, ///< It is one without its last letters, which are then a set-up.
    };

    struct Found {
        Fit fit = Fit::None;
        std::vector<std::size_t> scenes; ///< More than one where the story repeats a number or two ways of cutting fit.
        std::string setUp;               ///< "A" of 12A; empty when the number fits exactly, or in two ways.
    };

    /// Looks a number up, exactly first, then without set-up letters. A letter in front is never dropped: A12 is a scene
    /// of its own, before 12.
    /// @param scene  As CanonicalSceneNumber() gives it.
    Found Find(std::string_view scene, bool exactOnly = false) const;

    /// Looks up what the program itself has written into a clip: a number of the story, or the place, "007", of a scene
    /// that has none.
    Found FindWritten(std::string_view text) const;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    const std::vector<std::size_t>* Exact(std::string_view scene) const;

    std::vector<std::string> mNumbers;
    bool mHasParts = false;
    std::unordered_map<std::string, std::vector<std::size_t>, Hash, std::equal_to<>> mScenes;
};

} // namespace zonstory

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <zonstoryparser/StoryComparison.h>

#include "match/SceneNumbers.h"
#include "story/SceneSelection.h"

namespace zonstory {

/// Which draft's text a clip carries.
enum class DraftState {
    Current,  ///< What writing the new draft's scene would give.
    Outdated, ///< What writing the old draft's would have given.
    Other,    ///< Neither: edited since, or of a third draft.
    None,     ///< No text of a scene.
    Unknown,  ///< Of a scene that the new draft does not have.
};
const char* DraftStateWord(DraftState state);

struct DraftAnswer {
    DraftState state = DraftState::None;
    std::optional<std::size_t> position; ///< Of the scene in the new draft, from 1.
    std::string scene;                   ///< Its number there, as it is written; else what the clip carries.
};

/// Tells clips of one draft from those of another, by the text that writing either would give: a clip that `write` would
/// leave alone is current. For one thread; the texts of a scene are made when a clip first asks for them.
/// @pre The toolkit is initialized while one lives.
class DraftFinder {
public:
    /// @param oldDraft  Null where it is not known.
    DraftFinder(const zonstoryparser::Talewright* oldDraft, const zonstoryparser::Talewright& newDraft,
                const zonstoryparser::StoryComparison& comparison);

    /// @param number           What the clip carries as its scene's number, or as a slate.
    /// @param isOfAnotherDraft Whether the clip names another script than the new draft: a text that differs is then an
    ///                         old one, also where the old draft is not known.
    DraftAnswer Find(const std::string& number, const zonstoryparser::CarriedScene& carried,
                     bool isOfAnotherDraft = false);

private:
    struct Draft {
        explicit Draft(const zonstoryparser::Talewright& story);
        const zonstoryparser::CarriedScene& TextOf(std::size_t index);
        /// The scenes of this number; of a slate, those that it names.
        std::vector<std::size_t> Named(const std::string& number) const;
        /// The first of them that would leave this text; nothing where none does.
        std::optional<std::size_t> Find(const std::string& number, const zonstoryparser::CarriedScene& carried);

        std::vector<SelectedScene> scenes;
        SceneNumbers slates;
        std::vector<std::string> numbers;
        std::unordered_map<std::string, std::vector<std::size_t>> byNumber;
        std::vector<std::optional<zonstoryparser::CarriedScene>> texts;
    };

    DraftAnswer Answer(DraftState state, std::size_t newIndex) const;

    std::optional<Draft> mOld;
    Draft mNew;
    std::unordered_map<std::size_t, std::size_t> mNewOfOld;
};

} // namespace zonstory

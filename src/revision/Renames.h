#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include <zonstoryparser/StoryComparison.h>

#include "revision/DraftScene.h"
#include "revision/ScenePairing.h"

namespace zonstoryparser {

/// Names that are gone from the new draft and stand for one other name, new to it, wherever the old draft had them. A name
/// of one scene alone counts as changed, not as renamed.
std::vector<Rename> FindRenames(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft,
                                const ScenePairs& pairs);

/// Puts new names in the place of old ones, as whole words, in capitals, with a capital first letter, and as they stand.
class Renaming {
public:
    explicit Renaming(const std::vector<Rename>& renames);

    bool IsEmpty() const { return mByFirstWord.empty(); }
    UString Apply(std::u16string_view text) const;

private:
    struct Name {
        UString from;
        UString to;
    };
    std::unordered_map<UString, std::vector<Name>> mByFirstWord;
};

} // namespace zonstoryparser

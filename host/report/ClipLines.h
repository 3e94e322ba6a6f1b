#pragma once

#include <map>
#include <string>
#include <vector>

#include "report/Page.h"

namespace zonstory {

/// How the lines of clips look: those of one set-up alike, or of one camera where a clip's set-up is not known. The page
/// has `kCount` looks, each of another colour and stroke; where there are more set-ups they begin again.
class ClipLooks {
public:
    static constexpr std::size_t kCount = 8;

    explicit ClipLooks(const std::vector<PageClip>& clips);

    std::size_t Of(const PageClip& clip) const;
    /// What each look stands for, as far as there are several.
    Json Legend() const;

private:
    std::map<std::string, std::size_t> mLooks;
};

/// "A-3", "A", "take 3": set-up and take as far as they are known.
std::string Mark(const PageClip& clip);

/// One clip, for the template.
Json ClipJson(const PageClip& clip, const ClipLooks& looks);

/// Clips of one scene, by set-up, then in the order given.
Json ClipLines(const std::vector<std::size_t>& places, const std::vector<PageClip>& clips, const ClipLooks& looks);

} // namespace zonstory

#include "match/SceneText.h"

#include "match/NameRuns.h"
#include "match/SlateWords.h"

namespace zonstory {

std::string CanonicalSceneNumber(std::string_view text) {
    const NameRuns runs(text);
    std::string canonical;
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const std::string_view part = runs.Text(run);
        const bool sceneWord = canonical.empty() && run + 1 < runs.size() && MeaningOf(part) == SlateWord::Scene;
        if (sceneWord) {
            continue;
        }
        const bool betweenNumbers = !canonical.empty() && runs[run].digits && runs[run - 1].digits;
        canonical += betweenNumbers ? "." : "";
        canonical += runs[run].digits ? WithoutLeadingZeros(part) : part;
    }
    return canonical;
}

} // namespace zonstory

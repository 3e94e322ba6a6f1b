#include "match/SceneNumbers.h"

#include <charconv>
#include <utility>

#include <fmt/format.h>

#include "match/NameRuns.h"
#include "match/SlateWords.h"

namespace zonstory {

std::string CanonicalSceneNumber(std::string_view text) {
    const NameRuns runs(text);
    std::string canonical;
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const std::string_view part = runs.Text(run);
        if (canonical.empty() && run + 1 < runs.size() && MeaningOf(part) == SlateWord::Scene) {
            continue;
        }
        const bool betweenNumbers = !canonical.empty() && runs[run].digits && runs[run - 1].digits;
        canonical += betweenNumbers ? "." : "";
        canonical += runs[run].digits ? WithoutLeadingZeros(part) : part;
    }
    return canonical;
}

SceneNumbers::SceneNumbers(std::vector<std::string> numbers) : mNumbers(std::move(numbers)) {
    mScenes.reserve(mNumbers.size());
    for (std::size_t scene = 0; scene < mNumbers.size(); ++scene) {
        if (std::string canonical = CanonicalSceneNumber(mNumbers[scene]); !canonical.empty()) {
            mHasParts = mHasParts || canonical.find('.') != std::string::npos;
            mScenes[std::move(canonical)].push_back(scene);
        }
    }
}

SceneNumbers::Found SceneNumbers::Find(std::string_view scene, bool exactOnly) const {
    Found found;
    if (const auto* const exact = Exact(scene)) {
        found.fit = Fit::Exact;
        found.scenes = *exact;
        return found;
    }
    for (std::size_t letters = 1; !exactOnly && letters <= 2 && letters < scene.size(); ++letters) {
        const std::string_view setUp = scene.substr(scene.size() - letters);
        const auto* const stripped = IsSetUp(setUp) ? Exact(scene.substr(0, scene.size() - letters)) : nullptr;
        if (stripped) {
            found.setUp = std::string(found.scenes.empty() ? setUp : std::string_view());
            found.fit = Fit::SetUpStripped;
            found.scenes.insert(found.scenes.end(), stripped->begin(), stripped->end());
        }
    }
    return found;
}

SceneNumbers::Found SceneNumbers::FindWritten(std::string_view text) const {
    Found found = Find(CanonicalSceneNumber(text), true);
    std::size_t place = 0;
    const char* const end = text.data() + text.size();
    const bool isPlace = std::from_chars(text.data(), end, place).ptr == end && text == fmt::format("{:03}", place) &&
                         place >= 1 && place <= mNumbers.size() && mNumbers[place - 1].empty();
    if (isPlace) {
        found.fit = Fit::Exact;
        found.scenes.push_back(place - 1);
    }
    return found;
}

const std::vector<std::size_t>* SceneNumbers::Exact(std::string_view scene) const {
    const auto found = mScenes.find(scene);
    return found == mScenes.end() ? nullptr : &found->second;
}

} // namespace zonstory

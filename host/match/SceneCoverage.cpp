#include "match/SceneCoverage.h"

#include <algorithm>
#include <charconv>
#include <tuple>

#include "match/Decision.h"

namespace zonstory {

namespace {

// Takes in their order: by number, and what is no number behind.
auto TakeOrder(std::string_view take) {
    unsigned number = 0;
    const auto [rest, error] = std::from_chars(take.data(), take.data() + take.size(), number);
    return std::tuple(error != std::errc(), number, take);
}

void Sort(std::vector<std::size_t>& clips, const std::vector<CoverageRecord>& records) {
    std::stable_sort(clips.begin(), clips.end(), [&](std::size_t left, std::size_t right) {
        return TakeOrder(records[left].take) < TakeOrder(records[right].take);
    });
}

} // namespace

SceneCoverage FindSceneCoverage(const std::vector<CoverageRecord>& records, const SceneNumbers& story) {
    SceneCoverage coverage;
    coverage.scenes.resize(story.size());
    for (std::size_t clip = 0; clip < records.size(); ++clip) {
        if (records[clip].scene.empty()) {
            coverage.withoutScene.push_back(clip);
            continue;
        }
        const Decision decision = Decide({StateField(Source::Xmp, records[clip].scene, {})}, story, Confidence::Low);
        if (decision.scene) {
            coverage.scenes[*decision.scene].clips.push_back(clip);
        } else {
            (decision.verdict == Verdict::Ambiguous ? coverage.ambiguous : coverage.unknown).push_back(clip);
        }
    }
    for (std::size_t scene = 0; scene < coverage.scenes.size(); ++scene) {
        Sort(coverage.scenes[scene].clips, records);
        if (coverage.scenes[scene].clips.empty()) {
            coverage.uncovered.push_back(scene);
        }
    }
    return coverage;
}

} // namespace zonstory

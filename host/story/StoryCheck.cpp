#include "story/StoryCheck.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "story/BodyScenes.h"
#include "story/PacketRule.h"
#include "story/SceneChecks.h"

namespace zonstory {

namespace {

using Scenes = std::vector<boost::intrusive_ptr<zonstoryparser::Scene>>;

/// Collects findings, each with the scene it is about.
class Collector {
public:
    explicit Collector(const zonscreenplay::SourceLines& lines) : mLines(lines) {}

    void CheckScene(const zonstoryparser::Scene& scene, std::size_t position) {
        const std::string number = zoncore::UTF16to8(scene.sceneNumber);
        const ReportFinding report = [&](std::size_t line, FindingKind kind, std::string message) {
            mFindings.push_back({line, kind, position, number, std::move(message)});
        };
        CheckNumber(scene, position, report);
        CheckHeading(scene, mLines, report);
        CheckDuration(scene, mLines, report);
        CheckDialogue(scene, mLines, report);
        if (const auto reason = WhyNoPacket(scene)) {
            report(mLines.Of(scene), FindingKind::NoPacket, "the scene yields no packet: " + *reason);
        }
    }

    // Of a story that is not numbered at all, one finding says so.
    void CheckNumbering(const Scenes& scenes) {
        mIsNumbered =
            std::any_of(scenes.begin(), scenes.end(), [](const auto& scene) { return !scene->sceneNumber.empty(); });
        if (!mIsNumbered && !scenes.empty()) {
            mFindings.push_back(
                {mLines.Of(*scenes.front()), FindingKind::MissingNumber, 0, "", "no scene has a number"});
        }
    }

    std::vector<Finding> Take() {
        std::stable_sort(mFindings.begin(), mFindings.end(),
                         [](const Finding& left, const Finding& right) { return left.line < right.line; });
        return std::move(mFindings);
    }

private:
    void CheckNumber(const zonstoryparser::Scene& scene, std::size_t position, const ReportFinding& report) {
        if (scene.sceneNumber.empty()) {
            if (mIsNumbered) {
                report(mLines.Of(scene), FindingKind::MissingNumber, "the scene has no number");
            }
            return;
        }
        const auto [first, isNew] = mFirstWithNumber.try_emplace(scene.sceneNumber, position, mLines.Of(scene));
        if (!isNew) {
            report(mLines.Of(scene), FindingKind::DuplicateNumber,
                   fmt::format("the number is also that of scene #{} in line {}", first->second.first,
                               first->second.second));
        }
    }

    const zonscreenplay::SourceLines& mLines;
    bool mIsNumbered = false;
    std::unordered_map<zoncore::UString, std::pair<std::size_t, std::size_t>> mFirstWithNumber; // position and line
    std::vector<Finding> mFindings;
};

} // namespace

std::vector<Finding> CheckStory(const zonstoryparser::Talewright& story, const zonscreenplay::SourceLines& lines) {
    const Scenes scenes = BodyScenes(story);
    Collector collector(lines);
    collector.CheckNumbering(scenes);
    std::size_t position = 0;
    for (const auto& scene : scenes) {
        collector.CheckScene(*scene, ++position);
    }
    return collector.Take();
}

} // namespace zonstory

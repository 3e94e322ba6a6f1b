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

using zonscreenplay::WarningKind;

FindingKind KindOf(WarningKind kind) {
    switch (kind) {
    case WarningKind::LeftOut:
        return FindingKind::LeftOut;
    case WarningKind::Omitted:
        return FindingKind::Omitted;
    case WarningKind::BeforeHeading:
        return FindingKind::BeforeHeading;
    case WarningKind::Unclosed:
        return FindingKind::Unclosed;
    case WarningKind::Encoding:
        return FindingKind::Encoding;
    case WarningKind::Assumed:
        break;
    }
    return FindingKind::Assumed;
}

/// Collects findings, each with the scene it is about.
class Collector {
public:
    explicit Collector(const Story& story) : mStory(story), mLines(story.lines) {
        for (const zonscreenplay::Warning& warning : story.warnings) {
            mFindings.push_back({warning.line, KindOf(warning.kind), 0, "", warning.text});
            mBeginsWithoutHeading = mBeginsWithoutHeading || warning.kind == WarningKind::BeforeHeading;
        }
    }

    void CheckScene(const zonstoryparser::Scene& scene, std::size_t position) {
        const std::string number = zoncore::UTF16to8(scene.sceneNumber);
        const ReportFinding report = [&](std::size_t line, FindingKind kind, std::string message) {
            mFindings.push_back({line, kind, position, number, std::move(message)});
        };
        const bool isBeforeHeading = position == 1 && mBeginsWithoutHeading; // said already
        if (!isBeforeHeading) {
            CheckNumber(scene, position, report);
        }
        if (!isBeforeHeading && !mStory.scenes[position - 1].omitted) {
            CheckHeading(scene, mLines, report);
        }
        CheckDuration(scene, mLines, report);
        CheckDialogue(scene, mLines, report);
        if (const auto reason = ReasonForNoPacket(scene)) {
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

    const Story& mStory;
    const zonscreenplay::SourceLines& mLines;
    bool mBeginsWithoutHeading = false;
    bool mIsNumbered = false;
    std::unordered_map<zoncore::UString, std::pair<std::size_t, std::size_t>> mFirstWithNumber; // position and line
    std::vector<Finding> mFindings;
};

} // namespace

std::vector<Finding> CheckStory(const Story& story) {
    const Scenes scenes = BodyScenes(*story.root);
    Collector collector(story);
    collector.CheckNumbering(scenes);
    std::size_t position = 0;
    for (const auto& scene : scenes) {
        collector.CheckScene(*scene, ++position);
    }
    return collector.Take();
}

} // namespace zonstory

#include "report/ScenePages.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include "report/FactTable.h"
#include "report/ScriptBlocks.h"

namespace zonstory {

namespace {

// What stands small beneath a heading: "page 4 to 5, 1 3/8 pages, 0:01:30".
std::string SmallPrint(const SceneFacts& facts) {
    std::vector<std::string> parts;
    if (!facts.properties.page.empty()) {
        parts.push_back("page " + facts.properties.page +
                        (facts.lastPage && std::to_string(*facts.lastPage) != facts.properties.page
                             ? fmt::format(" to {}", *facts.lastPage)
                             : ""));
    }
    if (facts.properties.eighths > 0) {
        parts.push_back("length " + EighthsText(facts.properties.eighths));
    }
    if (!facts.duration.empty()) {
        parts.push_back("duration " + facts.duration);
    }
    if (!facts.properties.revision.empty()) {
        parts.push_back("revision " + facts.properties.revision);
    }
    return fmt::format("{}", fmt::join(parts, " · "));
}

std::string Count(std::size_t clips) {
    return clips == 1 ? "1 clip" : fmt::format("{} clips", clips);
}

// The colours of a strip board.
std::string StripLook(const SceneLight& light) {
    static constexpr const char* kPlaces[] = {"interior", "exterior", "both", "anywhere"};
    static constexpr const char* kLights[] = {"day", "night", "twilight", "anytime"};
    return fmt::format("{} {}", kPlaces[static_cast<std::size_t>(light.place)],
                       kLights[static_cast<std::size_t>(light.light)]);
}

} // namespace

Json LinedScript(const PageInput& input, const std::vector<PageScene>& scenes, const ClipLooks& looks) {
    static const std::vector<PageClip> kNone;
    const std::vector<PageClip>& clips = input.clips ? input.clips->clips : kNone;
    const DualCues dualCues = DualCuesOf(input.story);
    Json script = Json::array();
    for (const PageScene& scene : scenes) {
        const std::string smallPrint = SmallPrint(scene.facts);
        script.push_back({{"position", scene.facts.position},
                          {"number", scene.facts.number},
                          {"label", scene.Label()},
                          {"heading", scene.heading},
                          {"smallPrint", smallPrint},
                          {"hasSmallPrint", !smallPrint.empty()},
                          {"isOmitted", scene.facts.properties.omitted},
                          {"isBare", input.clips && scene.IsBare()},
                          {"isShown", !scene.clips.empty()},
                          {"clipCount", Count(scene.clips.size())},
                          {"clipLines", ClipLines(scene.clips, clips, looks)},
                          {"blocks", ScriptBlocks(*scene.scene, dualCues)}});
    }
    return script;
}

FactTable StripBoard(const std::vector<PageScene>& scenes, bool hasClips) {
    const LengthMeasure length(scenes);
    FactTable board = {"strips",
                       "Strip board",
                       {{"Scene", false},
                        {"Heading", false},
                        {"Where", false},
                        {"When", false},
                        {length.title, true},
                        {"Speakers", false}},
                       {}};
    if (hasClips) {
        board.columns.push_back({"Clips", true});
    }
    for (const PageScene& scene : scenes) {
        FactRow row;
        row.cells = {{scene.Label(), scene.Link()},   {scene.heading},
                     {Name(scene.light.place)},       {Name(scene.light.light)},
                     {length.Text(length.Of(scene))}, {fmt::format("{}", fmt::join(scene.facts.speakers, ", "))}};
        row.amount = static_cast<double>(length.Of(scene));
        row.look = StripLook(scene.light) + (scene.facts.properties.omitted ? " omitted" : "") +
                   (hasClips && scene.IsBare() ? " bare" : "");
        if (hasClips) {
            row.cells.push_back({scene.clips.empty() ? "none" : std::to_string(scene.clips.size())});
        }
        board.rows.push_back(std::move(row));
    }
    return board;
}

} // namespace zonstory

#include "report/ClipLines.h"

#include <algorithm>
#include <tuple>

#include <nlohmann/json.hpp>

#include "output/SafeText.h"

namespace zonstory {

namespace {

std::string LookName(const PageClip& clip) {
    if (!clip.setUp.empty()) {
        return "set-up " + clip.setUp;
    }
    return clip.camera.empty() ? "no set-up" : "camera " + clip.camera;
}

// AA comes behind Z.
auto SetUpOrder(const PageClip& clip) {
    return std::tuple(clip.setUp.size(), clip.setUp);
}

std::string Details(const PageClip& clip) {
    std::string details = SafeLine(clip.name);
    for (const auto& [word, value] : {std::pair(", set-up ", &clip.setUp), std::pair(", take ", &clip.take),
                                      std::pair(", camera ", &clip.camera), std::pair(", text: ", &clip.draft)}) {
        details += value->empty() ? "" : word + SafeLine(*value);
    }
    return details;
}

} // namespace

ClipLooks::ClipLooks(const std::vector<PageClip>& clips) {
    for (const PageClip& clip : clips) {
        mLooks.emplace(LookName(clip), 0);
    }
    std::size_t next = 0;
    for (auto& [name, look] : mLooks) {
        look = next++ % kCount;
    }
}

std::size_t ClipLooks::Of(const PageClip& clip) const {
    return mLooks.at(LookName(clip));
}

Json ClipLooks::Legend() const {
    Json legend = Json::array();
    for (const auto& [name, look] : mLooks) {
        legend.push_back({{"lookName", SafeLine(name)}, {"look", look}});
    }
    return legend.size() > 1 ? legend : Json::array();
}

std::string Mark(const PageClip& clip) {
    if (clip.setUp.empty()) {
        return clip.take.empty() ? "" : "take " + clip.take;
    }
    return clip.take.empty() ? clip.setUp : clip.setUp + '-' + clip.take;
}

Json ClipJson(const PageClip& clip, const ClipLooks& looks) {
    return {{"look", looks.Of(clip)}, {"mark", SafeLine(Mark(clip))},   {"clip", SafeLine(clip.name)},
            {"link", clip.link},      {"isLinked", !clip.link.empty()}, {"details", Details(clip)},
            {"isOld", clip.IsOld()},  {"draft", SafeLine(clip.draft)}};
}

Json ClipLines(const std::vector<std::size_t>& places, const std::vector<PageClip>& clips, const ClipLooks& looks) {
    std::vector<std::size_t> ordered = places;
    std::stable_sort(ordered.begin(), ordered.end(), [&](std::size_t left, std::size_t right) {
        return SetUpOrder(clips[left]) < SetUpOrder(clips[right]);
    });
    Json lines = Json::array();
    for (const std::size_t place : ordered) {
        lines.push_back(ClipJson(clips[place], looks));
    }
    return lines;
}

} // namespace zonstory

#include "report/Overview.h"

#include <algorithm>
#include <map>
#include <type_traits>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "report/FactTable.h"
#include "report/Picture.h"

namespace zonstory {

namespace {

// More than these make no picture; the rest are one row together, and all have their own part of the page.
constexpr std::size_t kMostSpeakers = 16;

Json Figure(const FactTable& table, Json picture) {
    Json figure = TableJson(table);
    figure["figureId"] = table.id;
    figure["figureTitle"] = table.title;
    figure["picture"] = std::move(picture);
    return figure;
}

FactRow CountRow(const std::string& name, std::size_t count) {
    return {{{name}, {std::to_string(count)}}, static_cast<double>(count)};
}

std::string CastLink(std::size_t place) {
    return "#character-" + std::to_string(place + 1);
}

FactTable SpeechTable(const std::vector<CharacterFacts>& characters) {
    FactTable table = {"speech",
                       "Speech by character",
                       {{"Character", false}, {"Scenes", true}, {"Lines", true}, {"Words", true}},
                       {}};
    CharacterFacts others;
    for (std::size_t at = 0; at < characters.size(); ++at) {
        const CharacterFacts& who = characters[at];
        if (at < kMostSpeakers) {
            table.rows.push_back({{{who.name, CastLink(at)},
                                   {std::to_string(who.scenes.size())},
                                   {std::to_string(who.lines)},
                                   {std::to_string(who.words)}},
                                  static_cast<double>(who.words)});
        } else {
            others.lines += who.lines;
            others.words += who.words;
        }
    }
    if (characters.size() > kMostSpeakers) {
        table.rows.push_back({{{fmt::format("{} others", characters.size() - kMostSpeakers)},
                               {""},
                               {std::to_string(others.lines)},
                               {std::to_string(others.words)}},
                              static_cast<double>(others.words)});
    }
    return table;
}

// "1 to 4, 7": runs of scenes by their labels.
std::string SceneList(const std::vector<std::size_t>& positions, const std::vector<PageScene>& scenes) {
    std::string list;
    for (const auto& [first, last] : RunsOf(positions)) {
        list += (list.empty() ? "" : ", ") + scenes[first - 1].Label();
        list += last == first ? "" : " to " + scenes[last - 1].Label();
    }
    return list;
}

FactTable PresenceTable(const std::vector<CharacterFacts>& characters, const std::vector<PageScene>& scenes) {
    FactTable table = {"presence", "Who speaks where", {{"Character", false}, {"Scenes", false}}, {}};
    for (std::size_t at = 0; at < std::min(characters.size(), kMostSpeakers); ++at) {
        table.rows.push_back({{{characters[at].name, CastLink(at)}, {SceneList(characters[at].scenes, scenes)}},
                              static_cast<double>(characters[at].scenes.size()),
                              characters[at].scenes});
    }
    return table;
}

// How many scenes, and how long together, by the kind that `kindOf` finds in the light of each.
template <typename KindOf>
FactTable KindTable(const char* id, const char* title, const char* kind, const std::vector<PageScene>& scenes,
                    const KindOf& kindOf) {
    const LengthMeasure length(scenes);
    struct Sum {
        std::size_t scenes = 0;
        std::size_t length = 0;
    };
    std::map<std::invoke_result_t<KindOf, const SceneLight&>, Sum> sums;
    for (const PageScene& scene : scenes) {
        if (!scene.facts.properties.omitted) {
            Sum& sum = sums[kindOf(scene.light)];
            ++sum.scenes;
            sum.length += length.Of(scene);
        }
    }
    FactTable table = {id, title, {{kind, false}, {"Scenes", true}, {length.title, true}}, {}};
    for (const auto& [what, sum] : sums) {
        table.rows.push_back(
            {{{Name(what)}, {std::to_string(sum.scenes)}, {length.Text(sum.length)}}, static_cast<double>(sum.scenes)});
    }
    return table;
}

struct SceneCounts {
    std::size_t shown = 0;
    std::size_t bare = 0;
    std::size_t omitted = 0;
};

SceneCounts CountScenes(const std::vector<PageScene>& scenes) {
    SceneCounts counts;
    for (const PageScene& scene : scenes) {
        ++(scene.IsBare() ? counts.bare : scene.clips.empty() ? counts.omitted : counts.shown);
    }
    return counts;
}

// A row for each count; of those that are 0 only the first.
FactTable CountTable(const char* id, const char* title, const char* of,
                     const std::vector<std::pair<const char*, std::size_t>>& counts) {
    FactTable table = {id, title, {{"What", false}, {of, true}}, {}};
    for (const auto& [name, count] : counts) {
        if (count > 0 || table.rows.empty()) {
            table.rows.push_back(CountRow(name, count));
        }
    }
    return table;
}

FactTable CoverageTable(const std::vector<PageScene>& scenes) {
    const SceneCounts counts = CountScenes(scenes);
    return CountTable("coverage", "Scenes shown by clips", "Scenes",
                      {{"Shown", counts.shown}, {"Not shown", counts.bare}, {"Omitted", counts.omitted}});
}

FactTable ClipTable(const PageClips& clips) {
    const std::size_t others = clips.withoutScene.size() + clips.unknown.size() + clips.ambiguous.size();
    return CountTable("clips-by-scene", "Clips by what they show", "Clips",
                      {{"A scene of the story", clips.clips.size() - others},
                       {"No scene", clips.withoutScene.size()},
                       {"A scene that the story does not have", clips.unknown.size()},
                       {"A number of several scenes", clips.ambiguous.size()}});
}

FactTable DraftTable(const PageClips& clips) {
    FactTable table = {"drafts", "Clips by the draft they carry", {{"Text", false}, {"Clips", true}}, {}};
    std::map<std::string, std::size_t> counts;
    for (const PageClip& clip : clips.clips) {
        ++counts[clip.draft];
    }
    for (const auto& [draft, count] : counts) {
        if (!draft.empty()) {
            table.rows.push_back(CountRow(draft, count));
        }
    }
    return table;
}

std::size_t CountOld(const PageClips& clips) {
    return static_cast<std::size_t>(
        std::count_if(clips.clips.begin(), clips.clips.end(), [](const PageClip& clip) { return clip.IsOld(); }));
}

Json Number(std::size_t value, const std::string& what, bool isAlarm = false) {
    return {{"value", value}, {"what", what}, {"isAlarm", isAlarm && value > 0}};
}

} // namespace

Json HeadNumbers(const PageInput& input, const std::vector<PageScene>& scenes,
                 const std::vector<CharacterFacts>& characters) {
    const SceneCounts counts = CountScenes(scenes);
    Json numbers = {Number(scenes.size(), "scenes"), Number(characters.size(), "speakers")};
    if (input.clips) {
        const PageClips& clips = *input.clips;
        numbers.push_back(Number(clips.clips.size(), "clips"));
        numbers.push_back(Number(counts.shown, "scenes shown"));
        numbers.push_back(Number(counts.bare, "scenes without a clip", true));
        numbers.push_back(Number(clips.withoutScene.size(), "clips without a scene", true));
        numbers.push_back(Number(CountOld(clips), "clips of another draft", true));
    }
    return numbers;
}

Json Figures(const PageInput& input, const std::vector<PageScene>& scenes,
             const std::vector<CharacterFacts>& characters) {
    Json figures = Json::array();
    const auto addBars = [&](const FactTable& table, std::size_t column) {
        if (!table.rows.empty()) {
            figures.push_back(Figure(table, BarPicture(table, column)));
        }
    };
    if (input.clips) {
        addBars(CoverageTable(scenes), 1);
        addBars(ClipTable(*input.clips), 1);
        addBars(DraftTable(*input.clips), 1);
    }
    addBars(KindTable("places", "Interior and exterior", "Where", scenes,
                      [](const SceneLight& light) { return light.place; }),
            1);
    addBars(KindTable("lights", "Day and night", "When", scenes, [](const SceneLight& light) { return light.light; }),
            1);
    addBars(SpeechTable(characters), 3);
    const FactTable presence = PresenceTable(characters, scenes);
    if (!presence.rows.empty()) {
        figures.push_back(Figure(presence, PresencePicture(presence, scenes.size())));
    }
    return figures;
}

} // namespace zonstory

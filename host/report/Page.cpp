#include "report/Page.h"

#include <algorithm>
#include <string_view>

#include <nlohmann/json.hpp>

#include "output/SafeText.h"
#include "report/CastPages.h"
#include "report/ClipLines.h"
#include "report/FactTable.h"
#include "report/Overview.h"
#include "report/PageScene.h"
#include "report/Picture.h"
#include "report/ScenePages.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

// Fountain's marks of emphasis around the whole of a title.
std::string WithoutEmphasis(const std::string& text) {
    std::string_view plain = WithoutBlanks(text);
    while (plain.size() > 2 && plain.front() == plain.back() && (plain.front() == '*' || plain.front() == '_')) {
        plain = plain.substr(1, plain.size() - 2);
    }
    return std::string(plain);
}

using TitlePage = std::vector<std::pair<std::string, std::string>>;

// The line that is called so; of a title page without names, the first that says anything.
TitlePage::const_iterator FindTitle(const TitlePage& lines) {
    const auto named = std::find_if(lines.begin(), lines.end(), [](const auto& line) {
        return EqualIgnoringCase(line.first, "title") && !WithoutEmphasis(line.second).empty();
    });
    return named != lines.end() ? named : std::find_if(lines.begin(), lines.end(), [](const auto& line) {
        return line.first.empty() && !WithoutBlanks(line.second).empty();
    });
}

Json TitleLines(const TitlePage& lines) {
    const auto title = FindTitle(lines);
    Json others = Json::array();
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (line != title && !WithoutBlanks(line->second).empty()) {
            others.push_back({{"titleKey", line->first}, {"titleValue", WithoutEmphasis(line->second)}});
        }
    }
    return others;
}

std::string TitleOf(const PageInput& input) {
    const auto title = FindTitle(input.story.titlePage);
    return title == input.story.titlePage.end() ? SafeLine(input.name) : WithoutEmphasis(title->second);
}

std::vector<CharacterFacts> ByWords(std::vector<CharacterFacts> characters) {
    std::stable_sort(characters.begin(), characters.end(),
                     [](const CharacterFacts& left, const CharacterFacts& right) { return left.words > right.words; });
    return characters;
}

Json LooseClips(const PageClips& clips, const ClipLooks& looks) {
    Json groups = Json::array();
    const auto add = [&](const char* title, const std::vector<std::size_t>& places) {
        if (!places.empty()) {
            groups.push_back({{"groupTitle", title}, {"groupClips", ClipLines(places, clips.clips, looks)}});
        }
    };
    std::vector<std::size_t> old;
    for (std::size_t at = 0; at < clips.clips.size(); ++at) {
        if (clips.clips[at].IsOld()) {
            old.push_back(at);
        }
    }
    add("Clips without a scene", clips.withoutScene);
    add("Clips with a scene that the story does not have", clips.unknown);
    add("Clips with a number that several scenes have", clips.ambiguous);
    add("Clips that do not carry this draft's text", old);
    return groups;
}

} // namespace

Json PageData(const PageInput& input) {
    static const PageClips kNoClips;
    const PageClips& clips = input.clips ? *input.clips : kNoClips;
    const ClipLooks looks(clips.clips);
    const std::vector<PageScene> scenes = PageScenes(input);
    const std::vector<CharacterFacts> cast = ByWords(DescribeCharacters(*input.story.root));
    const FactTable strips = StripBoard(scenes, input.clips.has_value());
    Json loose = LooseClips(clips, looks);
    Json legend = looks.Legend();
    return {{"title", TitleOf(input)},
            {"titleLines", TitleLines(input.story.titlePage)},
            {"language", input.language},
            {"numbers", HeadNumbers(input, scenes, cast)},
            {"figures", Figures(input, scenes, cast)},
            {"strips", TableJson(strips)},
            {"lengths", ColumnPicture(strips, kLengthColumn)},
            {"hasLegend", !legend.empty()},
            {"legend", std::move(legend)},
            {"script", LinedScript(input, scenes, looks)},
            {"hasCast", !cast.empty()},
            {"cast", CastPages(scenes, cast)},
            {"hasLoose", !loose.empty()},
            {"loose", std::move(loose)}};
}

} // namespace zonstory

#include "report/Page.h"

#include <regex>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "report/SceneLight.h"
#include "report/Template.h"

namespace {

using namespace zonstory;
using ::testing::HasSubstr;
using ::testing::Not;

// Three scenes, the last without a clip; every text, name and path of it is `text`, in its place.
Story StoryOf(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        escaped += letter == '<'   ? "&lt;"
                   : letter == '>' ? "&gt;"
                   : letter == '&' ? "&amp;"
                   : letter == '"' ? "&quot;"
                                   : std::string(1, letter);
    }
    const auto paragraph = [&](const std::string& kind) {
        return "<Paragraph Type=\"" + kind + "\"><Text>" + escaped + "</Text></Paragraph>";
    };
    std::string scenes;
    for (const char* const more : {"Action", "Shot", "Transition"}) {
        scenes += "<Paragraph Type=\"Scene Heading\" Number=\"" + escaped + "\"><SceneProperties Page=\"" + escaped +
                  "\" Length=\"1 3/8\"/><Text>INT. " + escaped + "</Text></Paragraph>" + paragraph("Character") +
                  paragraph("Parenthetical") + paragraph("Dialogue") + paragraph(more);
    }
    return zonscreenplay::ReadScreenplayFromMemory("<FinalDraft><Content>" + scenes + "</Content><TitlePage><Content>" +
                                                       paragraph("Action") + "</Content></TitlePage></FinalDraft>",
                                                   "s.fdx");
}

PageInput InputOf(const Story& story, const std::string& text) {
    PageClips clips;
    clips.clips = {{text, "rushes/A%20001.mov", text, text, text, "outdated"}, {text, "", "", "2", "", text}};
    clips.ofScene = {{0, 1}, {1}, {}};
    clips.withoutScene = {0};
    return {story, text, text, std::move(clips)};
}

// The page's markup alone: its tags, with what may differ left out of them.
std::string MarkupOf(const std::string& page) {
    std::string markup;
    static const std::regex kTag("<[^>]*>");
    static const std::regex kValue("=\"[^\"<>]*\"");
    for (std::sregex_iterator tag(page.begin(), page.end(), kTag), end; tag != end; ++tag) {
        markup += std::regex_replace(tag->str(), kValue, "=") + '\n';
    }
    return markup;
}

TEST(Page, WhatAStoryOrAClipSaysIsText) {
    const auto fill = [](const std::string& text) {
        const Story story = StoryOf(text);
        return FillTemplate(BuiltInTemplate(), PageData(InputOf(story, text)));
    };
    const std::string plain = fill("Rain");
    for (const std::string hostile :
         {"<script>alert(1)</script>", "</title><img src=x onerror=alert(1)>", "\" onfocus=\"alert(1)\" autofocus=\"",
          "' onclick='alert(1)", "{{{title}}}{{>title}}{{#numbers}}", "]]>--><svg onload=alert(1)>"}) {
        EXPECT_EQ(MarkupOf(fill(hostile)), MarkupOf(plain)) << hostile;
    }
    EXPECT_THAT(BuiltInTemplate(), Not(::testing::ContainsRegex("\\{\\{[{&]")));
    EXPECT_THAT(FillTemplate("{{a}}", {{"a", "\xff\x1b\xe2\x80\xae\n"}}), "\\xff\\x1b\xe2\x80\xae\n");
    EXPECT_THROW(FillTemplate("{{#open}}", Json::object()), TemplateError);
}

double Share(const Json& shape) {
    return std::stod(shape["width"].get<std::string>());
}

TEST(Page, PicturesSayWhatTheirTablesSay) {
    const Story story =
        zonscreenplay::ReadScreenplayFromMemory("INT. A - DAY #1#\n\nJO\none two three\n\nMAX\none\n\nEXT. B - NIGHT "
                                                "#2#\n\nMAX\ntwo\n\nINT/EXT. C #3#\n\nJO\nx\n",
                                                "s.fountain");
    PageInput input = {story, "s", "", PageClips{}};
    input.clips->clips = {{"a", "", "B", "1", "", ""}, {"b", "", "A", "2", "", ""}};
    input.clips->ofScene = {{0, 1}, {0}, {}};
    const Json page = PageData(input);
    std::size_t drawn = 0;
    for (const Json& figure : page["figures"]) {
        const Json& rows = figure["rows"];
        if (figure["figureId"] == "presence") {
            continue;
        }
        const std::size_t last = figure["figureId"] == "speech" ? 3 : 1;
        double largest = 0;
        for (const Json& row : rows) {
            largest = std::max(largest, std::stod(row["cells"][last]["cell"].get<std::string>()));
        }
        for (std::size_t at = 0; at < rows.size(); ++at) { // a track and a bar each
            const double amount = std::stod(rows[at]["cells"][last]["cell"].get<std::string>());
            EXPECT_NEAR(Share(figure["picture"]["shapes"][2 * at + 1]), 100 * amount / largest, 0.01) << figure;
            ++drawn;
        }
    }
    EXPECT_EQ(drawn, 11U);
    const Json& presence = page["figures"].back();
    EXPECT_EQ(presence["rows"][0]["cells"][1]["cell"], "1, 3");
    EXPECT_EQ(presence["picture"]["shapes"][2]["x"], "66.667%") << "JO in the last of three scenes";
    EXPECT_EQ(presence["rows"][1]["cells"][1]["cell"], "1 to 2");
    EXPECT_NEAR(Share(presence["picture"]["shapes"][4]), 66.667, 0.001);
    EXPECT_EQ(page["script"][0]["clipLines"][0]["mark"], "A-2") << "by set-up";
    EXPECT_EQ(page["script"][2]["isBare"], true);
    EXPECT_EQ(page["cast"][0]["appearances"][1]["speeches"][0]["said"], "x");
    EXPECT_EQ(page["script"][0]["blocks"][0]["lines"].size(), 2U) << "a cue and what is said under it";
    input.clips.reset();
    EXPECT_EQ(PageData(input)["script"][2]["isBare"], false) << "nothing is missing where no clip was asked for";
}

TEST(SceneLight, IsReadAsPeopleDo) {
    const std::tuple<const char*, Place, Daylight> rows[] = {
        {"INT. NIGHT CLUB - DAY", Place::Interior, Daylight::Day},
        {"INT/EXT. KIOSK - EARLY MORNING", Place::Both, Daylight::Day},
        {"I/E CAR — DUSK", Place::Both, Daylight::Twilight},
        {"AUSS. HAFEN - DÄMMERUNG", Place::Exterior, Daylight::Twilight},
        {"A HOUSE - Día", Place::Untold, Daylight::Day},
        {"INTERVIEW", Place::Untold, Daylight::Untold},
        {"\xff", Place::Untold, Daylight::Untold},
    };
    for (const auto& [heading, place, light] : rows) {
        EXPECT_EQ(LightOf(heading).place, place) << heading;
        EXPECT_EQ(LightOf(heading).light, light) << heading;
    }
}

} // namespace

// One screenplay, written down as a story file, as FDX and as Fountain, is the same screenplay.
#include <regex>

#include <gtest/gtest.h>

#include <zonscreenplay/Screenplay.h>

#include "screenplay/Compact.h"
#include "screenplay/StoryText.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

namespace {

using support::Compact;
using zonscreenplay::ReadScreenplayFromMemory;

struct Paragraph {
    const char* story; ///< The kind in a story file.
    const char* fdx;   ///< The same in FDX.
    std::string text;
};

struct Scene {
    std::string number;
    std::string heading;
    std::vector<Paragraph> paragraphs;
};

std::string Words() {
    static const std::vector<std::string> kWords = {"rain", "Müller", "小明", "don't", "3.50", "a-b", "Ж", "Rain!"};
    std::string text = *rc::gen::elementOf(kWords);
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
        text += (*rc::gen::inRange(0, 5) == 0 ? "\n" : " ") + *rc::gen::elementOf(kWords);
    }
    return text;
}

void AppendSpeech(std::vector<Paragraph>& paragraphs) {
    paragraphs.push_back(
        {"Character", "Character", *rc::gen::element<std::string>("JO", "MÜLLER (V.O.)", "EMIL 2", "Ж (cont'd)")});
    if (*rc::gen::arbitrary<bool>()) {
        paragraphs.push_back({"Parenthetical", "Parenthetical", "(low)"});
    }
    paragraphs.push_back({"Dialog", "Dialogue", Words()});
}

Scene AnyScene() {
    Scene scene{*rc::gen::element<std::string>("", "1", "12A", "I-1-A", "3."),
                *rc::gen::element<std::string>("INT. BAR - DAY", "ext. quay", "EST. PORTO - ALBA", "I/E CAR - NIGHT"),
                {}};
    for (int count = *rc::gen::inRange(0, 5); count > 0; --count) {
        switch (*rc::gen::inRange(0, 4)) {
        case 0:
            scene.paragraphs.push_back({"Transition", "Transition", "CUT TO:"});
            break;
        case 1:
            scene.paragraphs.push_back({"Action", "General", "Then " + Words()});
            break;
        default:
            AppendSpeech(scene.paragraphs);
        }
    }
    return scene;
}

std::string AsStory(const std::vector<Scene>& scenes) {
    const auto paragraph = [](const std::string& kind, const std::string& text) {
        return "<paragraph objID='p' element='" + kind + "'><textRun>" + text + "</textRun></paragraph>";
    };
    std::string body;
    for (const Scene& scene : scenes) {
        body += "<scene sceneNumber='" + scene.number + "'>" + paragraph("SceneHeading", scene.heading);
        for (const Paragraph& each : scene.paragraphs) {
            body += paragraph(each.story, each.text);
        }
        body += "</scene>";
    }
    return support::WithBody(body);
}

std::string AsFDX(const std::vector<Scene>& scenes) {
    const auto paragraph = [](const std::string& kind, const std::string& text, const std::string& number) {
        const std::size_t half = text.find(' ') + 1; // 0 where there is no blank
        return "<Paragraph Number='" + number + "' Type='" + kind + "'><Text>" + text.substr(0, half) +
               "</Text><Text Style='Bold'>" + text.substr(half) + "</Text></Paragraph>\n";
    };
    std::string content;
    for (const Scene& scene : scenes) {
        content += paragraph("Scene Heading", scene.heading, scene.number);
        for (const Paragraph& each : scene.paragraphs) {
            content += paragraph(each.fdx, each.text, "");
        }
    }
    return "<FinalDraft><Content>" + content + "</Content></FinalDraft>";
}

std::string AsFountain(const std::vector<Scene>& scenes) {
    std::string text;
    for (const Scene& scene : scenes) {
        text += "\n" + scene.heading + (scene.number.empty() ? "" : " #" + scene.number + "#") + "\n";
        for (const Paragraph& each : scene.paragraphs) {
            const std::string kind = each.story;
            text += (kind == "Dialog" || kind == "Parenthetical" ? "" : "\n") + each.text + "\n";
        }
    }
    return text;
}

RC_GTEST_PROP(ThreeForms, AreOneScreenplay, ()) {
    std::vector<Scene> scenes(*rc::gen::inRange<std::size_t>(1, 6));
    for (Scene& scene : scenes) {
        scene = AnyScene();
    }
    const zonscreenplay::Screenplay story = ReadScreenplayFromMemory(AsStory(scenes), "s");
    const std::string expected = Compact(story);
    const zonscreenplay::Screenplay fdx = ReadScreenplayFromMemory(AsFDX(scenes), "s");
    const zonscreenplay::Screenplay fountain = ReadScreenplayFromMemory(AsFountain(scenes), "s.fountain");
    RC_ASSERT(Compact(fdx) == expected);
    RC_ASSERT(Compact(fountain) == expected);
    RC_ASSERT(Compact(ReadScreenplayFromMemory(WriteFountain(story), "s.fountain")) == expected);
    const std::string written = zonscreenplay::WriteStoryFile(*fountain.root);
    const zonscreenplay::Screenplay again = ReadScreenplayFromMemory(written, "s");
    RC_ASSERT(Compact(again) == expected);
    RC_ASSERT(zonscreenplay::WriteStoryFile(*again.root) == written);
}

// Fountain knows no shots: they come as action.
TEST(ThreeForms, OfTheSampleAgree) {
    const auto read = [](const std::string& ending) {
        std::string all = Compact(zonscreenplay::ReadScreenplay(SAMPLE "." + ending));
        const std::size_t shot = all.find("|shot: ");
        return shot == std::string::npos ? all : all.replace(shot, 7, "|action: ");
    };
    const std::string expected = read("skrx");
    EXPECT_EQ(read("fdx"), expected);
    // Two speeches of a speaker in a row are lines of one.
    const std::regex twoSpeeches("(\\|dialogue: [^|]*)\\|dialogue: ");
    std::string joined = expected;
    while (std::regex_search(joined, twoSpeeches)) {
        joined = std::regex_replace(joined, twoSpeeches, "$1/");
    }
    EXPECT_EQ(read("fountain"), joined);
}

} // namespace

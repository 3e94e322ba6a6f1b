#include "StoryGenerator.h"

#include <array>
#include <cstring>

namespace bench {

namespace {

constexpr char kBegin[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<Talewright version=\"1.0\" documentType=\"screenplay\" template=\"Feature\">\n"
                          "  <document version=\"1.0\">\n    <stream objID=\"st-1\" name=\"body\">\n"
                          "      <section objID=\"se-1\">\n";
constexpr char kEnd[] = "      </section>\n    </stream>\n  </document>\n</Talewright>\n";

constexpr char kBeginFDX[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n"
                             "<FinalDraft DocumentType=\"Script\" Template=\"No\" Version=\"5\">\n\n  <Content>\n";
constexpr char kEndFDX[] = "  </Content>\n</FinalDraft>\n";
constexpr char kBeginFountain[] = "Title: Generated\n\n";

constexpr std::array kWords = {"the",  "door", "closes", "behind", "her",   "and",    "nobody",  "asks", "why",
                               "rain", "on",   "glass",  "a",      "train", "leaves", "without", "them", "again"};
constexpr std::array kSpeakers = {"ANNA", "MARCO", "THE CLERK", "JONAS", "RUTH",
                                  "IDA",  "BORIS", "OLD MAN",   "VERA",  "J\xC3\x9CRGEN"};
constexpr std::array kHeadings = {"INT. STATION HALL - NIGHT", "EXT. PLATFORM - DAY", "INN. B\xC3\x9CRO - TAG",
                                  "EST. PORTO VECCHIO - ALBA", "INT/EXT. TAXI - EVENING"};

} // namespace

std::string StoryGenerator::OfSize(std::size_t bytes) {
    std::string story = Begin();
    story.reserve(bytes + 8192);
    const std::size_t rest = std::strlen(End());
    while (story.size() + rest < bytes) {
        AppendScene(story);
    }
    return story += End();
}

std::string StoryGenerator::OfScenes(std::size_t scenes) {
    std::string story = Begin();
    for (std::size_t i = 0; i < scenes; ++i) {
        AppendScene(story);
    }
    return story += End();
}

const char* StoryGenerator::Begin() const {
    return mForm == Form::Story ? kBegin : mForm == Form::FDX ? kBeginFDX : kBeginFountain;
}

const char* StoryGenerator::End() const {
    return mForm == Form::Story ? kEnd : mForm == Form::FDX ? kEndFDX : "";
}

void StoryGenerator::AppendScene(std::string& story) {
    ++mScenes;
    AppendHeading(story, kHeadings[mScenes % kHeadings.size()]);
    AppendParagraph(story, "Action", Words(30));
    for (int speech = 0; speech < 6; ++speech) {
        AppendParagraph(story, "Character", kSpeakers[Next(kSpeakers.size())]);
        AppendParagraph(story, mForm == Form::FDX ? "Dialogue" : "Dialog", Words(5 + Next(20)));
    }
    story += mForm == Form::Story ? "        </scene>\n" : "";
}

void StoryGenerator::AppendHeading(std::string& story, const std::string& text) {
    const std::string number = std::to_string(mScenes);
    switch (mForm) {
    case Form::Story:
        story += "        <scene objID=\"sc-" + number + "\" sceneNumber=\"" + number + "\">\n";
        return AppendStoryParagraph(story, "element=\"SceneHeading\" shotDuration=\"0:01:30\"", text);
    case Form::FDX:
        story += "    <Paragraph Number=\"" + number +
                 "\" Type=\"Scene Heading\">\n      <SceneProperties Length=\"3/8\" Page=\"1\" Title=\"\"/>\n"
                 "      <Text>" +
                 text + "</Text>\n    </Paragraph>\n";
        return;
    case Form::Fountain:
        story += "\n" + text + " #" + number + "#\n";
    }
}

void StoryGenerator::AppendParagraph(std::string& story, const std::string& kind, const std::string& text) {
    switch (mForm) {
    case Form::Story:
        return AppendStoryParagraph(story, "element=\"" + kind + "\"", text);
    case Form::FDX:
        story += "    <Paragraph Type=\"" + kind + "\">\n      <Text>" + text + "</Text>\n    </Paragraph>\n";
        return;
    case Form::Fountain:
        story += (kind == "Dialog" ? "" : "\n") + text + "\n";
    }
}

void StoryGenerator::AppendStoryParagraph(std::string& story, const std::string& attributes, const std::string& text) {
    const std::string object = std::to_string(++mObjects);
    story += "          <paragraph objID=\"p-" + object + "\" " + attributes + ">\n            <textRun objID=\"t-" +
             object + "\">" + text + "</textRun>\n          </paragraph>\n";
}

std::string StoryGenerator::Words(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += text.empty() ? "" : " ";
        text += kWords[Next(kWords.size())];
    }
    return text += '.';
}

// A linear congruence, so that the text does not depend on the standard library's generators.
std::uint32_t StoryGenerator::Next(std::uint32_t bound) {
    mState = mState * 1664525U + 1013904223U;
    return (mState >> 8) % bound;
}

} // namespace bench

#include "StoryGenerator.h"

#include <array>

namespace bench {

namespace {

constexpr char kBegin[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<Talewright version=\"1.0\" documentType=\"screenplay\" template=\"Feature\">\n"
                          "  <document version=\"1.0\">\n    <stream objID=\"st-1\" name=\"body\">\n"
                          "      <section objID=\"se-1\">\n";
constexpr char kEnd[] = "      </section>\n    </stream>\n  </document>\n</Talewright>\n";

constexpr std::array kWords = {"the",  "door", "closes", "behind", "her",   "and",    "nobody",  "asks", "why",
                               "rain", "on",   "glass",  "a",      "train", "leaves", "without", "them", "again"};
constexpr std::array kSpeakers = {"ANNA", "MARCO", "THE CLERK", "JONAS", "RUTH",
                                  "IDA",  "BORIS", "OLD MAN",   "VERA",  "J\xC3\x9CRGEN"};
constexpr std::array kHeadings = {"INT. STATION HALL - NIGHT", "EXT. PLATFORM - DAY", "INN. B\xC3\x9CRO - TAG",
                                  "EST. PORTO VECCHIO - ALBA", "INT/EXT. TAXI - EVENING"};

} // namespace

std::string StoryGenerator::OfSize(std::size_t bytes) {
    std::string story = kBegin;
    story.reserve(bytes + 8192);
    while (story.size() + sizeof kEnd < bytes) {
        AppendScene(story);
    }
    return story += kEnd;
}

std::string StoryGenerator::OfScenes(std::size_t scenes) {
    std::string story = kBegin;
    for (std::size_t i = 0; i < scenes; ++i) {
        AppendScene(story);
    }
    return story += kEnd;
}

void StoryGenerator::AppendScene(std::string& story) {
    const std::string number = std::to_string(++mScenes);
    story += "        <scene objID=\"sc-" + number + "\" sceneNumber=\"" + number + "\">\n";
    AppendParagraph(story, "element=\"SceneHeading\" shotDuration=\"0:01:30\"", kHeadings[mScenes % kHeadings.size()]);
    AppendParagraph(story, "element=\"Action\"", Words(30));
    for (int speech = 0; speech < 6; ++speech) {
        AppendParagraph(story, "element=\"Character\"", kSpeakers[Next(kSpeakers.size())]);
        AppendParagraph(story, "element=\"Dialog\"", Words(5 + Next(20)));
    }
    story += "        </scene>\n";
}

void StoryGenerator::AppendParagraph(std::string& story, const std::string& attributes, const std::string& text) {
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

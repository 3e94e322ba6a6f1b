#include "commands/Info.h"

#include <optional>
#include <vector>

#include <fmt/format.h>

#include "commands/SceneFields.h"
#include "output/ExitCode.h"
#include "output/Labelled.h"
#include "output/SafeText.h"
#include "story/SceneFacts.h"
#include "story/StreamFacts.h"

namespace zonstory {

namespace {

using zoncore::UTF16to8;

struct StoryFacts {
    zonscreenplay::Format format = zonscreenplay::Format::Story;
    std::vector<std::pair<std::string, std::string>> titlePage;
    std::string version;
    std::string documentVersion;
    std::string documentType;
    std::string templateName;
    std::string metaData;
    std::vector<std::string> tags;
    std::vector<StreamFacts> streams;
    std::vector<SceneFacts> scenes;
    std::size_t characters = 0;
    bool hasDocument = false;
    bool hasBody = false;
};

StoryFacts Describe(const Story& screenplay) {
    const zonstoryparser::Talewright& story = *screenplay.root;
    StoryFacts facts;
    facts.format = screenplay.format;
    facts.titlePage = screenplay.titlePage;
    facts.version = UTF16to8(story.version);
    facts.documentType = UTF16to8(story.documentType);
    facts.templateName = UTF16to8(story.templateName);
    facts.metaData = UTF16to8(story.metaData);
    for (const zoncore::UString& label : story.tagLabels) {
        facts.tags.push_back(UTF16to8(label));
    }
    facts.hasDocument = story.document != nullptr;
    facts.hasBody = facts.hasDocument && story.document->body != nullptr;
    facts.documentVersion = facts.hasDocument ? UTF16to8(story.document->version) : "";
    facts.streams = DescribeStreams(story);
    facts.scenes = DescribeScenes(screenplay);
    facts.characters = DescribeCharacters(story).size();
    return facts;
}

// Word by word what TraverseStory() reports; that function would also write files.
std::string VersionReport(const StoryFacts& facts) {
    if (!facts.hasDocument) {
        return "";
    }
    return "Story Version: " + facts.version + "  Document Version: " + facts.documentVersion +
           (facts.hasBody ? "" : "\nThe skrx file had no body?");
}

std::size_t Total(const std::vector<StreamFacts>& streams, std::size_t StreamFacts::*count) {
    std::size_t total = 0;
    for (const StreamFacts& stream : streams) {
        total += stream.*count;
    }
    return total;
}

const char* FormatWord(zonscreenplay::Format format) {
    switch (format) {
    case zonscreenplay::Format::FDX:
        return "fdx";
    case zonscreenplay::Format::Fountain:
        return "fountain";
    default:
        return "story";
    }
}

struct TitleLine {
    std::string key;
    std::string value;
};

// A list only where the story has a title page.
std::optional<std::vector<TitleLine>> TitlePageOf(const StoryFacts& facts) {
    std::vector<TitleLine> lines;
    for (const auto& [key, value] : facts.titlePage) {
        lines.push_back({key, value});
    }
    return lines.empty() ? std::nullopt : std::optional(std::move(lines));
}

} // namespace

template <>
const Fields<TitleLine>& FieldsOf<TitleLine>() {
    static const Fields<TitleLine> fields = {{"key", nullptr, &TitleLine::key}, {"value", nullptr, &TitleLine::value}};
    return fields;
}

template <>
const Fields<StreamFacts>& FieldsOf<StreamFacts>() {
    static const Fields<StreamFacts> fields = {
        {"stream", "stream", &StreamFacts::kind},
        {"name", "name", &StreamFacts::name},
        {"author", "author", &StreamFacts::author},
        {"scenes", "scenes", &StreamFacts::scenes},
        {"paragraphs", "paragraphs", &StreamFacts::paragraphs},
        {"textRuns", "text runs", &StreamFacts::textRuns},
    };
    return fields;
}

// One row of CSV has no place for the streams and scenes themselves: it counts them.
template <>
const Fields<StoryFacts>& FieldsOf<StoryFacts>() {
    static const Fields<StoryFacts> fields = {
        {"format", nullptr, [](const StoryFacts& facts) { return FormatWord(facts.format); }, Shown::InJson},
        Field<StoryFacts>("titlePage", nullptr, TitlePageOf, Shown::InJson).WhereTold(),
        {"report", nullptr, VersionReport, Shown::InJson},
        {"storyVersion", nullptr, &StoryFacts::version},
        {"documentVersion", nullptr, &StoryFacts::documentVersion},
        {"documentType", nullptr, &StoryFacts::documentType},
        {"template", nullptr, &StoryFacts::templateName},
        {"metaData", nullptr, &StoryFacts::metaData, Shown::InJson},
        {"tags", nullptr, &StoryFacts::tags, Shown::InJson},
        {"characters", nullptr, &StoryFacts::characters, Shown::InJson},
        {"streams", nullptr, &StoryFacts::streams, Shown::InJson},
        {"scenes", nullptr, &StoryFacts::scenes, Shown::InJson},
        {"streams", nullptr, [](const StoryFacts& facts) { return facts.streams.size(); }, Shown::InTables},
        {"scenes", nullptr, [](const StoryFacts& facts) { return facts.scenes.size(); }, Shown::InTables},
        {"paragraphs", nullptr, [](const StoryFacts& facts) { return Total(facts.streams, &StreamFacts::paragraphs); },
         Shown::InTables},
        {"textRuns", nullptr, [](const StoryFacts& facts) { return Total(facts.streams, &StreamFacts::textRuns); },
         Shown::InTables},
        {"characters", nullptr, &StoryFacts::characters, Shown::InTables},
        {"tags", nullptr, [](const StoryFacts& facts) { return facts.tags.size(); }, Shown::InTables},
    };
    return fields;
}

namespace {

std::string AsText(const StoryFacts& facts) {
    std::string text = SafeLines(VersionReport(facts));
    text += text.empty() ? "The story has no document.\n" : "\n";
    text += Labelled("format", FormatWord(facts.format));
    text += Labelled("type", facts.documentType);
    text += Labelled("template", facts.templateName);
    text += Labelled("scenes", std::to_string(facts.scenes.size()));
    text += Labelled("characters", std::to_string(facts.characters));
    text += Labelled("tags", std::to_string(facts.tags.size()));
    for (const std::string& tag : facts.tags) {
        text += "  " + SafeLine(tag) + '\n';
    }
    if (!facts.titlePage.empty()) {
        text += "\ntitle page\n";
        for (const auto& [key, value] : facts.titlePage) {
            text += SafeLines(key.empty() ? value : fmt::format("{}: {}", key, value)) + '\n';
        }
    }
    if (!facts.metaData.empty()) {
        text += "\nmetadata\n" + SafeLines(facts.metaData) + '\n';
    }
    if (!facts.streams.empty()) {
        text += '\n' + RecordTable(facts.streams).AsText();
    }
    if (!facts.scenes.empty()) {
        text += '\n' + RecordTable(facts.scenes).AsText();
    }
    return text;
}

} // namespace

int RunInfo(const InfoOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const StoryFacts facts = Describe(story);
    output.Result(InFormat(
        options.format, [&] { return AsText(facts); }, [&] { return DocumentText("info", facts); },
        [&] { return RecordTable(std::vector{facts}).AsCsv(); }));
    return kDone;
}

Json InfoSchema() {
    return DocumentSchema<StoryFacts>("info");
}

} // namespace zonstory

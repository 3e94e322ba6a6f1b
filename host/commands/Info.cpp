#include "commands/Info.h"

#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "commands/SceneTable.h"
#include "output/ExitCode.h"
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

Table StreamTable(const std::vector<StreamFacts>& streams) {
    Table table({{"stream", "stream"},
                 {"name", "name"},
                 {"author", "author"},
                 {"scenes", "scenes", Align::Right},
                 {"paragraphs", "paragraphs", Align::Right},
                 {"text_runs", "text runs", Align::Right}});
    for (const StreamFacts& stream : streams) {
        table.AddRow({stream.kind, stream.name, stream.author, std::to_string(stream.scenes),
                      std::to_string(stream.paragraphs), std::to_string(stream.textRuns)});
    }
    return table;
}

std::string Labelled(const char* label, const std::string& value) {
    return value.empty() ? "" : fmt::format("{:<14}{}\n", label, value);
}

std::string AsText(const StoryFacts& facts) {
    std::string text = SafeLines(VersionReport(facts));
    text += text.empty() ? "The story has no document.\n" : "\n";
    text += Labelled("format", FormatWord(facts.format));
    text += Labelled("type", SafeLine(facts.documentType));
    text += Labelled("template", SafeLine(facts.templateName));
    text += Labelled("scenes", std::to_string(facts.scenes.size()));
    text += Labelled("characters", std::to_string(facts.characters));
    text += Labelled("tags", std::to_string(facts.tags.size()));
    for (const std::string& tag : facts.tags) {
        text += "  " + SafeLine(tag) + '\n';
    }
    if (!facts.titlePage.empty()) {
        text += "\ntitle page\n";
        for (const auto& [key, value] : facts.titlePage) {
            text += SafeLines(key.empty() ? value : key + ": " + value) + '\n';
        }
    }
    if (!facts.metaData.empty()) {
        text += "\nmetadata\n" + SafeLines(facts.metaData) + '\n';
    }
    if (!facts.streams.empty()) {
        text += '\n' + StreamTable(facts.streams).AsText();
    }
    if (!facts.scenes.empty()) {
        text += '\n' + SceneTable(facts.scenes).AsText();
    }
    return text;
}

Json StreamJson(const std::vector<StreamFacts>& streams) {
    Json rows = Json::array();
    for (const StreamFacts& stream : streams) {
        rows.push_back({{"stream", stream.kind},
                        {"name", stream.name},
                        {"author", stream.author},
                        {"scenes", stream.scenes},
                        {"paragraphs", stream.paragraphs},
                        {"textRuns", stream.textRuns}});
    }
    return rows;
}

std::string AsJson(const StoryFacts& facts) {
    Json document = JsonDocument("info", 1);
    document["format"] = FormatWord(facts.format);
    for (const auto& [key, value] : facts.titlePage) {
        document["titlePage"].push_back({{"key", key}, {"value", value}});
    }
    document["report"] = VersionReport(facts);
    document["storyVersion"] = facts.version;
    document["documentVersion"] = facts.documentVersion;
    document["documentType"] = facts.documentType;
    document["template"] = facts.templateName;
    document["metaData"] = facts.metaData;
    document["tags"] = facts.tags;
    document["characters"] = facts.characters;
    document["streams"] = StreamJson(facts.streams);
    document["scenes"] = SceneJson(facts.scenes);
    return JsonText(document);
}

std::string AsCsv(const StoryFacts& facts) {
    Table table({{"story_version", ""},
                 {"document_version", ""},
                 {"document_type", ""},
                 {"template", ""},
                 {"streams", ""},
                 {"scenes", ""},
                 {"paragraphs", ""},
                 {"text_runs", ""},
                 {"characters", ""},
                 {"tags", ""}});
    table.AddRow({facts.version, facts.documentVersion, facts.documentType, facts.templateName,
                  std::to_string(facts.streams.size()), std::to_string(facts.scenes.size()),
                  std::to_string(Total(facts.streams, &StreamFacts::paragraphs)),
                  std::to_string(Total(facts.streams, &StreamFacts::textRuns)), std::to_string(facts.characters),
                  std::to_string(facts.tags.size())});
    return table.AsCsv();
}

} // namespace

int RunInfo(const InfoOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const StoryFacts facts = Describe(story);
    output.Result(InFormat(
        options.format, [&] { return AsText(facts); }, [&] { return AsJson(facts); }, [&] { return AsCsv(facts); }));
    return kDone;
}

} // namespace zonstory

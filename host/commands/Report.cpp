#include "commands/Report.h"

#include <filesystem>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <unordered_map>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "commands/ClipLinks.h"
#include "commands/Results.h"
#include "commands/UsageError.h"
#include "files/FileError.h"
#include "files/ReadFile.h"
#include "output/ExitCode.h"
#include "report/Page.h"
#include "report/Template.h"
#include "story/BodyScenes.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

// Beyond a hundred features no browser is of help, and a hostile file would ask for gigabytes.
constexpr std::size_t kMostScenes = 20'000;
constexpr std::size_t kMostParagraphs = 500'000;

void RequireRoom(const Story& story) {
    const auto scenes = BodyScenes(*story.root);
    const std::size_t paragraphs =
        std::accumulate(scenes.begin(), scenes.end(), std::size_t{0},
                        [](std::size_t sum, const auto& scene) { return sum + scene->paragraphs.size(); });
    if (scenes.size() > kMostScenes || paragraphs > kMostParagraphs) {
        throw std::length_error(fmt::format("the story has {} scenes and {} paragraphs, which is too much for one page",
                                            scenes.size(), paragraphs));
    }
}

std::string ReadTemplate(const std::string& file) try {
    return file.empty() ? BuiltInTemplate() : ReadFile(file);
} catch (const FileError& error) {
    throw UsageError(file + ": " + error.what());
}

std::string Fill(const std::string& text, const std::string& file, const Json& data) try {
    return FillTemplate(text, data);
} catch (const TemplateError& error) {
    throw UsageError(file + ": " + error.what());
}

// Clips by the last part of their names; those that share it, as the user named them.
std::vector<std::string> NamesToShow(const std::vector<CoverageRecord>& records) {
    std::unordered_map<std::string, std::size_t> uses;
    std::vector<std::string> names;
    names.reserve(records.size());
    for (const CoverageRecord& record : records) {
        names.push_back(fs::path(record.clip).filename().string());
        ++uses[names.back()];
    }
    for (std::size_t at = 0; at < records.size(); ++at) {
        names[at] = uses[names[at]] > 1 ? records[at].clip : names[at];
    }
    return names;
}

PageClips ClipsFor(const CoveredClips& covered, const std::string& target) {
    ClipLinks links(target == "-" ? fs::path(".") : fs::path(target).parent_path());
    const std::vector<std::string> names = NamesToShow(covered.records);
    PageClips page;
    page.clips.reserve(names.size());
    for (std::size_t at = 0; at < names.size(); ++at) {
        const CoverageRecord& record = covered.records[at];
        page.clips.push_back(
            {names[at], links.To(record.clip), record.setUp, record.take, record.camera, record.state.value_or("")});
    }
    page.ofScene.reserve(covered.coverage.scenes.size());
    for (const SceneCoverage::Scene& scene : covered.coverage.scenes) {
        page.ofScene.push_back(scene.clips);
    }
    page.withoutScene = covered.coverage.withoutScene;
    page.unknown = covered.coverage.unknown;
    page.ambiguous = covered.coverage.ambiguous;
    return page;
}

std::vector<std::string> AllInputs(const ReportOptions& options) {
    std::vector<std::string> inputs = InputsOf(options.clips);
    inputs.push_back(options.templateFile);
    return inputs;
}

} // namespace

int RunReport(const ReportOptions& options, Output& output) {
    RefuseToReplace(options.target, AllInputs(options));
    const std::string text = ReadTemplate(options.templateFile);
    const Story story = ReadStory(options.clips.story);
    RequireRoom(story);
    PageInput input = {story, fs::path(options.clips.story.Name()).filename().string(), options.language, std::nullopt};
    int exitCode = kDone;
    if (!options.clips.clips.empty()) {
        const CoveredClips covered = ReadCoveredClips(story, options.clips, output);
        input.clips = ClipsFor(covered, options.target);
        const bool allMatched = covered.coverage.unknown.empty() && covered.coverage.ambiguous.empty();
        exitCode = !covered.allRead ? kSomeFailed : allMatched ? kDone : kUnmatched;
    }
    std::string page = Fill(text, options.templateFile, PageData(input));
    DeliverResult({Format::Text, options.target}, {"report", [&] { return page; }, nullptr, nullptr}, output);
    return exitCode;
}

} // namespace zonstory

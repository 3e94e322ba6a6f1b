#include "cli/MatchVerbs.h"

#include <memory>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>

#include "cli/CommonOptions.h"
#include "commands/Coverage.h"
#include "commands/Match.h"
#include "commands/Report.h"

namespace zonstory {

namespace {

void AddBar(CLI::App& command, Confidence& bar) {
    command
        .add_option_function<std::string>(
            "--min-confidence", [&bar](const std::string& text) { bar = ParseConfidence(text).value_or(bar); },
            "How sure a match must be: low, medium (unless given), high, certain, or a number from 0 to 100")
        ->check(CLI::Validator(
            [](const std::string& text) {
                return ParseConfidence(text) ? std::string() : "must be low, medium, high, certain, or 0 to 100";
            },
            ""))
        ->type_name("LEVEL");
}

void AddSlates(CLI::App& command, SlateStyle& slates) {
    command
        .add_option_function<std::string>(
            "--slates",
            [&slates](const std::string& word) {
                slates = word == "continuous" ? SlateStyle::Continuous : SlateStyle::Scene;
            },
            "Slates are numbered by scene and set-up (scene, unless given: 12A-3), or through the shoot (continuous), "
            "where only a log knows the scene of a number")
        ->check(CLI::IsMember({"scene", "continuous"}))
        ->type_name("");
}

// A story, clips that are asked what they show of it, and the draft before.
CLI::Option* AddClipsOfStory(CLI::App& command, ClipsOfStory& options) {
    AddStory(command, options.story);
    CLI::Option* const clips = AddClips(command, options.clips, options.recursive);
    command
        .add_option(
            "--old", options.oldStory,
            "The draft before STORY: says of each clip whether it carries the text of this one (current), of that "
            "(outdated) or of neither (other)")
        ->type_name("FILE");
    return clips;
}

} // namespace

void AddMatchSettings(CLI::App& command, MatchSettings& settings) {
    command
        .add_option("--log", settings.logs,
                    "A log of the shoot: CSV with a clip and a scene column, or ALE; may be given again")
        ->type_name("FILE")
        ->allow_extra_args(false);
    AddText(command, "--columns", "KIND=NAME,...",
            "Names of a log's columns that are not known: clip=Datei,scene=Szene; kinds are clip, file, folder, sound, "
            "reel, number, scene, take and slate",
            [&settings](const std::string& text) { settings.columns = ParseGivenColumns(text); });
    AddText(command, "--pattern", "PATTERN",
            "What the clips are called, where names do not tell it: '{scene}{setup}-{take}'; also {shot}, {camera}, "
            "{roll}, "
            "{episode}, {day}, {counter}, and * for anything",
            [&settings](const std::string& text) { settings.pattern = GivenPattern(text); });
    AddSlates(command, settings.slates);
    AddBar(command, settings.bar);
}

Action AddMatch(CLI::App& command) {
    auto options = std::make_shared<MatchOptions>();
    AddStory(command, options->story);
    AddClips(command, options->clips, options->recursive)->required();
    AddMatchSettings(command, options->match);
    AddFormat(command, options->format);
    AddSidecar(command, options->clip);
    return [options](Output& output) { return RunMatch(*options, output); };
}

Action AddCoverage(CLI::App& command) {
    auto options = std::make_shared<CoverageOptions>();
    AddClipsOfStory(command, options->clips)->required();
    AddResultTarget(command, options->target);
    AddSidecar(command, options->clips.clip);
    return [options](Output& output) { return RunCoverage(*options, output); };
}

Action AddReport(CLI::App& command) {
    auto options = std::make_shared<ReportOptions>();
    AddClipsOfStory(command, options->clips);
    command.add_option("-o,--output", options->target, "The page; - for standard output")
        ->type_name("FILE")
        ->required();
    command
        .add_option(
            "--template", options->templateFile,
            "A Mustache template instead of the program's own, which is installed as share/zonstory/report.html")
        ->type_name("FILE");
    command
        .add_option("--language", options->language,
                    "The language of the screenplay, for screen readers: en, de-AT, ar")
        ->type_name("TAG");
    AddSidecar(command, options->clips.clip);
    return [options](Output& output) { return RunReport(*options, output); };
}

} // namespace zonstory

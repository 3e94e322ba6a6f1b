#include "cli/LogVerb.h"

#include <memory>
#include <string>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>

#include "cli/CommonOptions.h"
#include "cli/MatchVerbs.h"
#include "commands/Log.h"

namespace zonstory {

namespace {

void AddFills(CLI::App& command, std::vector<LogFill>& fills) {
    fills = *FindLogProfile("script");
    CLI::Option* const profile =
        command
            .add_option_function<std::string>(
                "--profile", [&fills](const std::string& name) { fills = FindLogProfile(name).value_or(fills); },
                "What is filled: a column for each thing (script, unless given: scene, take, set, location, time, "
                "dialogue, "
                "action, characters), or what media pools have (media: scene, shot, take, description, comments, "
                "keywords)")
            ->check(CLI::IsMember({"script", "media"}))
            ->type_name("");
    AddText(command, "--fill", "FIELD[=COLUMN],...",
            "What is filled, and in which columns: scene,take,set=Motiv. Fields are those of the profiles",
            [&fills](const std::string& text) { fills = ParseLogFills(text); });
    profile->excludes(command.get_option("--fill"));
}

} // namespace

Action AddLog(CLI::App& command) {
    auto options = std::make_shared<LogOptions>();
    command.add_option("FILE", options->files, "Logs: ALE, CSV or FCPXML")->required()->type_name("");
    AddStory(command, options->story, "--story");
    command
        .add_option("-o,--output", options->target,
                    "The file to write; of several logs, the folder for files of their names")
        ->type_name("FILE");
    command.add_flag("--in-place", options->inPlace,
                     "Write the logs themselves; -o may then be one of them, or missing");
    command.add_flag("-n,--dry-run", options->dryRun, "Say which cells would be filled; nothing is written");
    command.add_flag("--replace", options->replace, "Replace other values, too; without it they stay and are listed");
    AddFills(command, options->fills);
    command
        .add_option(
            "--clips", options->clips,
            "The clips that the logs are about, or their folder: what they carry tells the scene as well; may be "
            "given again")
        ->type_name("PATH")
        ->allow_extra_args(false);
    command.add_flag("-r,--recursive", options->recursive, "Go down into folders within the folders of clips");
    AddMatchSettings(command, options->match);
    AddFormat(command, options->format);
    AddSidecar(command, options->clip);
    return [options](Output& output) { return RunLog(*options, output); };
}

} // namespace zonstory

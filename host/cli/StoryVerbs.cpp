#include "cli/StoryVerbs.h"

#include <memory>

#include <CLI/App.hpp>

#include "cli/CommonOptions.h"
#include "commands/Characters.h"
#include "commands/Check.h"
#include "commands/Convert.h"
#include "commands/Diff.h"
#include "commands/Dump.h"
#include "commands/Info.h"
#include "commands/Packets.h"
#include "commands/Scenes.h"

namespace zonstory {

namespace {

// A verb with a story and a table of results.
template <typename Options>
std::shared_ptr<Options> AddStoryTable(CLI::App& command) {
    auto options = std::make_shared<Options>();
    AddStory(command, options->story);
    AddResultTarget(command, options->target);
    return options;
}

// A verb with a story and a format, and nothing else.
template <typename Options>
Action AddReader(CLI::App& command, int (*run)(const Options&, Output&)) {
    auto options = std::make_shared<Options>();
    AddStory(command, options->story);
    AddFormat(command, options->format);
    return [options, run](Output& output) { return run(*options, output); };
}

} // namespace

Action AddInfo(CLI::App& command) {
    return AddReader<InfoOptions>(command, RunInfo);
}

Action AddScenes(CLI::App& command) {
    const auto options = AddStoryTable<ScenesOptions>(command);
    return [options](Output& output) { return RunScenes(*options, output); };
}

Action AddCharacters(CLI::App& command) {
    const auto options = AddStoryTable<CharactersOptions>(command);
    command.add_flag("--by-scene", options->byScene,
                     "Each speaker's lines in each scene: a row a scene, a column a speaker");
    return [options](Output& output) { return RunCharacters(*options, output); };
}

Action AddCheck(CLI::App& command) {
    return AddReader<CheckOptions>(command, RunCheck);
}

Action AddPackets(CLI::App& command) {
    auto options = std::make_shared<PacketsOptions>();
    AddStory(command, options->story);
    command
        .add_option("--scene", options->scenes,
                    "A scene, by number or position (#7); may be given again. All scenes unless given")
        ->type_name("SCENE")
        ->allow_extra_args(false);
    command.add_option("-o,--output", options->target, "The folder for the packets; - for standard output")
        ->type_name("DIR")
        ->required();
    return [options](Output& output) { return RunPackets(*options, output); };
}

Action AddDump(CLI::App& command) {
    auto options = std::make_shared<DumpOptions>();
    AddStory(command, options->story);
    return [options](Output& output) { return RunDump(*options, output); };
}

Action AddConvert(CLI::App& command) {
    auto options = std::make_shared<ConvertOptions>();
    AddStory(command, options->story);
    command.add_option("-o,--output", options->target, "The new file; .skrx is a story file, .fountain is Fountain")
        ->type_name("FILE")
        ->required();
    return [options](Output& output) { return RunConvert(*options, output); };
}

// Both drafts are read with one set of options.
Action AddDiff(CLI::App& command) {
    auto options = std::make_shared<DiffOptions>();
    command.add_option("OLD", options->oldStory.path, "The earlier draft; - for standard input")
        ->required()
        ->type_name("");
    AddStory(command, options->newStory, "NEW");
    AddClips(command, options->clips, options->recursive);
    AddFormat(command, options->format);
    command.add_flag("--words", options->words, "Show the words that came and went");
    command.add_flag("--stat", options->stat, "Show the counts alone");
    command.add_flag("--outdated", options->onlyOutdated, "Print the names of outdated clips alone, a line each");
    command.add_flag("--exit-code", options->exitCode, "End with 5 when anything differs");
    AddSidecar(command, options->clip);
    return [options](Output& output) {
        const std::string path = std::move(options->oldStory.path);
        options->oldStory = options->newStory;
        options->oldStory.path = path;
        return RunDiff(*options, output);
    };
}

} // namespace zonstory

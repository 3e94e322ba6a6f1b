#include "cli/StoryVerbs.h"

#include <memory>

#include <CLI/App.hpp>

#include "cli/CommonOptions.h"
#include "commands/Characters.h"
#include "commands/Dump.h"
#include "commands/Info.h"
#include "commands/Scenes.h"

namespace zonstory {

namespace {

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
    return AddReader<ScenesOptions>(command, RunScenes);
}

Action AddCharacters(CLI::App& command) {
    return AddReader<CharactersOptions>(command, RunCharacters);
}

Action AddDump(CLI::App& command) {
    auto options = std::make_shared<DumpOptions>();
    AddStory(command, options->story);
    return [options](Output& output) { return RunDump(*options, output); };
}

} // namespace zonstory

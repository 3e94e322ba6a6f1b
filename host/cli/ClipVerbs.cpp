#include "cli/ClipVerbs.h"

#include <memory>

#include <CLI/App.hpp>

#include "cli/CommonOptions.h"
#include "cli/MatchVerbs.h"
#include "commands/Clear.h"
#include "commands/Recover.h"
#include "commands/Show.h"
#include "commands/Write.h"

namespace zonstory {

Action AddWrite(CLI::App& command) {
    auto options = std::make_shared<WriteOptions>();
    AddStory(command, options->story);
    AddClips(command, options->clips, options->recursive);
    command
        .add_option("--scene", options->scene, "The scene, by its number as the story writes it, or by position: #7")
        ->type_name("SCENE");
    command
        .add_option(
            "--map", options->map,
            "A CSV file with the columns clip and scene, instead of --scene and CLIP. In place of a scene it may say "
            "clear or skip. Comma, semicolon or tab; "
            "UTF-8 or UTF-16. A relative clip is looked for beside the file first. - for standard input")
        ->type_name("FILE");
    command.add_flag("--match", options->isMatching,
                     "Find each clip's scene by logs, metadata and names, as 'match' does");
    AddMatchSettings(command, options->match);
    command.add_flag("--replace", options->replaces, "With --match: write over another scene that a clip says already");
    command.add_flag("--only-empty", options->onlyEmpty, "Leave clips alone that say anything of a scene already");
    AddBatch(command, options->batch);
    return [options](Output& output) { return RunWrite(*options, output); };
}

Action AddClear(CLI::App& command) {
    auto options = std::make_shared<ClearOptions>();
    AddClips(command, options->clips, options->recursive)->required();
    AddBatch(command, options->batch);
    return [options](Output& output) { return RunClear(*options, output); };
}

Action AddShow(CLI::App& command) {
    auto options = std::make_shared<ShowOptions>();
    AddClips(command, options->clips, options->recursive)->required();
    AddFormat(command, options->format);
    AddSidecar(command, options->clip);
    return [options](Output& output) { return RunShow(*options, output); };
}

Action AddRecover(CLI::App& command) {
    auto options = std::make_shared<RecoverOptions>();
    command.add_option("FOLDER", options->folders, "Folders; those beneath are searched as well")
        ->required()
        ->type_name("");
    command.add_flag("-n,--dry-run", options->dryRun, "Tell what there is; remove nothing");
    return [options](Output& output) { return RunRecover(*options, output); };
}

} // namespace zonstory

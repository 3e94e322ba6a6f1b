#include "cli/ClipVerbs.h"

#include <memory>

#include <CLI/App.hpp>

#include "cli/CommonOptions.h"
#include "cli/MatchVerbs.h"
#include "commands/Clear.h"
#include "commands/History.h"
#include "commands/Recover.h"
#include "commands/Show.h"
#include "commands/Undo.h"
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

Action AddUndo(CLI::App& command) {
    auto options = std::make_shared<UndoOptions>();
    command
        .add_option("JOURNAL", options->journal,
                    "The journal, a file or a folder of them; ~/.local/state/zonstory unless given")
        ->type_name("");
    command.add_option("--run", options->run, "Take back this run, by the beginning of its id in 'history'")
        ->type_name("ID");
    command.add_flag("--outside", options->isOutside,
                     "Also clips that do not lie beneath the folder of JOURNAL: it may come from others, and name any "
                     "file");
    AddBatchWork(command, options->batch);
    return [options](Output& output) { return RunUndo(*options, output); };
}

Action AddHistory(CLI::App& command) {
    auto options = std::make_shared<HistoryOptions>();
    command
        .add_option("JOURNAL", options->journal,
                    "The journal, a file or a folder of them; ~/.local/state/zonstory unless given")
        ->type_name("");
    command.add_option("--clip", options->clip, "Tell this clip's changes, with old and new values")->type_name("FILE");
    AddFormat(command, options->format);
    return [options](Output& output) { return RunHistory(*options, output); };
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

#include "cli/CommonOptions.h"

#include <functional>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>

#include "commands/ClipReport.h"

namespace zonstory {

namespace {

// One of a few words, each standing for a value that is to be set.
template <typename Value>
CLI::Option* AddChoice(CLI::App& command, const std::string& name, const std::function<void(Value)>& set,
                       const std::vector<std::pair<std::string, Value>>& choices, const std::string& description) {
    std::vector<std::string> words;
    words.reserve(choices.size());
    for (const auto& choice : choices) {
        words.push_back(choice.first);
    }
    return command
        .add_option_function<std::string>(
            name,
            [set, choices](const std::string& word) {
                for (const auto& choice : choices) {
                    if (choice.first == word) {
                        set(choice.second);
                    }
                }
            },
            description)
        ->check(CLI::IsMember(words))
        ->type_name("");
}

template <typename Value>
CLI::Option* AddChoice(CLI::App& command, const std::string& name, Value& value,
                       const std::vector<std::pair<std::string, Value>>& choices, const std::string& description) {
    return AddChoice<Value>(
        command, name, [&value](Value chosen) { value = chosen; }, choices, description);
}

CLI::Option* AddSeconds(CLI::App& command, const std::string& name, std::chrono::seconds& value,
                        const std::string& description) {
    return command
        .add_option_function<unsigned>(
            name, [&value](unsigned seconds) { value = std::chrono::seconds(seconds); }, description)
        ->type_name("SECONDS");
}

void AddJournal(CLI::App& command, JournalOptions& journal) {
    command
        .add_option("--journal", journal.place,
                    "Record what is changed in this file, or in a file of this folder, beside the footage perhaps; in "
                    "~/.local/state/zonstory unless given. 'undo' takes a run back by it")
        ->type_name("FILE");
    command.add_flag_callback(
        "--no-journal", [&journal] { journal.isKept = false; }, "Record nothing; the run cannot be undone");
    std::vector<std::pair<std::string, HashKind>> kinds;
    kinds.reserve(std::size(kHashKinds));
    for (const HashKind kind : kHashKinds) {
        kinds.emplace_back(HashName(kind), kind);
    }
    AddChoice<HashKind>(command, "--hash", journal.hash, kinds,
                        "Of which kind the journal's checksums are; xxh128 "
                        "unless given");
}

} // namespace

void AddStory(CLI::App& command, StoryFile& story, const std::string& name) {
    command.add_option(name, story.path, "The screenplay: a story file, FDX or Fountain; - for standard input")
        ->required()
        ->type_name(name.starts_with('-') ? "FILE" : "");
    using Choice = std::optional<zonscreenplay::Format>;
    AddChoice<Choice>(command, "--from", story.format,
                      {{"story", zonscreenplay::Format::Story},
                       {"fdx", zonscreenplay::Format::FDX},
                       {"fountain", zonscreenplay::Format::Fountain}},
                      "The format of the screenplay. Unless given, XML is known by its root, and Fountain by a name in "
                      ".fountain, .spmd or .txt");
    command.add_flag("--strict-fountain", story.strictFountain,
                     "In Fountain, take only the headings that the format itself knows");
    command
        .add_option_function<std::size_t>(
            "--max-size", [&story](std::size_t mebibytes) { story.limits = zonscreenplay::Limits::ForSize(mebibytes); },
            "Refuse a story beyond this size, or one that would grow beyond it; 128 unless given")
        ->check(CLI::Range(std::size_t{1}, std::size_t{1024} * 1024))
        ->type_name("MIB");
}

CLI::Option* AddText(CLI::App& command, const char* name, const char* type, const char* description,
                     const std::function<void(const std::string&)>& read) {
    const auto check = [read](const std::string& text) {
        try {
            read(text);
        } catch (const std::invalid_argument& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    return command
        .add_option_function<std::string>(
            name, [](const std::string&) {}, description)
        ->check(CLI::Validator(check, ""))
        ->type_name(type);
}

void AddFormat(CLI::App& command, Format& format) {
    AddChoice<Format>(command, "--format", format,
                      {{"text", Format::Text}, {"json", Format::Json}, {"csv", Format::Csv}},
                      "How to print the results; text unless given");
}

void AddResultTarget(CLI::App& command, ResultTarget& target) {
    AddFormat(command, target.format);
    command
        .add_option(
            "-o,--output", target.file,
            "Write the results into a file: a spreadsheet where its name ends in .xlsx, JSON or CSV where it ends "
            "so, else as --format says")
        ->type_name("FILE");
}

CLI::Option* AddClips(CLI::App& command, std::vector<std::string>& clips, bool& recursive) {
    command.add_flag("-r,--recursive", recursive, "Go down into folders within folders");
    return command.add_option("CLIP", clips, "Clips, or folders that stand for the clips in them")->type_name("");
}

void AddSidecar(CLI::App& command, ClipOptions& options) {
    const std::function<void(Placement)> place = [&command, &options](Placement placement) {
        const bool isForced = command.get_option("--sidecar")->count() > 0; // whoever else gives a place
        options.placement = isForced ? Placement::Sidecar : placement;
    };
    AddChoice<Placement>(
        command, "--place", place,
        {{"auto", Placement::Auto}, {"inside", Placement::Inside}, {"sidecar", Placement::Sidecar}},
        "Where metadata goes, and which place counts where both say something: inside a clip where "
        "that leaves all else in it as it is, no hash list names it and no sidecar says a scene, else "
        "beside it (auto, unless given, here, by ZONSTORY_PLACE or by a file); inside or nowhere; into "
        "a sidecar")
        ->configurable();
    command.add_flag_callback(
        "--sidecar", [&options] { options.placement = Placement::Sidecar; }, "As --place sidecar");
    AddChoice<SidecarName>(command, "--sidecar-name", options.sidecarName,
                           {{"short", SidecarName::Short}, {"full", SidecarName::Full}},
                           "Name a new sidecar clip.xmp (short, unless given) or clip.mov.xmp (full)")
        ->configurable();
}

void AddBatchWork(CLI::App& command, BatchOptions& options) {
    command.add_flag("-n,--dry-run", options.clip.dryRun, "Say what would be done; nothing is copied or changed");
    command.add_flag("--preserve-time", options.clip.preserveTime, "Keep the files' modification times");
    command
        .add_option("-j,--jobs", options.jobs,
                    "How many clips to work on at once; 4 unless given, 0 for one a processor")
        ->check(CLI::Range(0, 256))
        ->type_name("N")
        ->configurable();
    AddSeconds(command, "--wait", options.locks.wait,
               "How long to wait for another run that works on a clip; 600 unless given")
        ->configurable();
    AddSeconds(command, "--settle", options.clip.settle, "Refuse clips that were changed more recently")
        ->configurable();
    command.add_flag_callback(
        "--no-lock", [&options] { options.locks.useLocks = false; },
        "Do without locks, for file systems that have none; let no other run work there meanwhile");
    command
        .add_option("--report", options.report,
                    "Write what became of each clip into a file, .json or .csv, as soon as it is known")
        ->type_name("FILE")
        ->check(CLI::Validator(
            [](const std::string& name) {
                return IsReportName(name) ? std::string() : "the report's name must end in .json or .csv";
            },
            ""));
}

void AddBatch(CLI::App& command, BatchOptions& options) {
    AddBatchWork(command, options);
    command.add_flag("--paths", options.showPaths, "Print the metadata paths that changed under each clip");
    AddSidecar(command, options.clip);
    command.add_flag_callback(
        "--no-verify", [&options] { options.clip.verifyMedia = false; },
        "Do not compare picture and sound in the new version with the old");
    AddJournal(command, options.journal);
}

} // namespace zonstory

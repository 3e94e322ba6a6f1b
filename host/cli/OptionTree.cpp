#include "cli/OptionTree.h"

#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "cli/HelpFormatter.h"
#include "cli/Verb.h"

namespace zonstory {

namespace {

constexpr char kDescription[] = "Carries what a screenplay says into the metadata of the clips that show it.";

std::string ExitCodeHelp() {
    std::string text = "Exit codes:\n";
    for (const ExitCodeMeaning& row : ExitCodeMeanings()) {
        text += fmt::format("  {}  {}\n", static_cast<int>(row.code), row.meaning);
    }
    return text;
}

void AddVerb(CLI::App& program, const Verb& verb, Invocation& invocation) {
    CLI::App* const command = program.add_subcommand(verb.name, verb.summary);
    command->group("Verbs");
    command->footer(fmt::format("Example:\n  {}\n", verb.example));
    const Action run = verb.addOptions(*command);
    command->callback([run, &invocation] { invocation.run = run; });
}

} // namespace

std::unique_ptr<CLI::App> MakeOptionTree(Invocation& invocation) {
    auto program = std::make_unique<CLI::App>(kDescription, "zonstory");
    program->formatter(std::make_shared<HelpFormatter>());
    program->get_formatter()->column_width(32);
    program->get_formatter()->label("Positionals", "Arguments");
    program->option_defaults()->configurable(false); // but for those that say otherwise
    program->set_help_flag("-h,--help", "Print this help and end");
    program->set_version_flag("--version", "zonstory " ZONSTORY_VERSION, "Print the version and end");
    program->add_flag("-q,--quiet", invocation.isQuiet, "Print no notes and no progress; results and errors stay");
    program->add_flag("--no-color", invocation.isWithoutColor,
                      "Print without colours; NO_COLOR in the environment also does");
    program
        ->add_option("--config", invocation.configuration,
                     "A file of standing choices, as 'place = sidecar'; ~/.config/zonstory.toml unless given")
        ->type_name("FILE");
    program->fallthrough();
    program->require_subcommand(1);
    for (const Verb& verb : Verbs()) {
        AddVerb(*program, verb, invocation);
    }
    program->footer(ExitCodeHelp());
    return program;
}

const std::vector<ExitCodeMeaning>& ExitCodeMeanings() {
    static const std::vector<ExitCodeMeaning> kMeanings = {
        {kDone, "done"},
        {kSomeFailed, "some clips failed, or results could not be written"},
        {kUsage, "the command line makes no sense, or a file it names"},
        {kStoryUnread, "the story is unreadable or malformed"},
        {kUnmatched, "a scene was not found or is ambiguous, or a clip stayed unmatched"},
        {kDiffers, "diff --exit-code found a difference"},
        {kNoJournal, "the journal cannot be written or read; no clip was touched"},
    };
    return kMeanings;
}

} // namespace zonstory

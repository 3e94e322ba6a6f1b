#include "cli/Program.h"

#include <csignal>
#include <cstdio>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/App.hpp>

#include "cli/Configuration.h"
#include "cli/OptionTree.h"
#include "commands/InterruptSignals.h"
#include "commands/UsageError.h"
#include "journal/JournalPlace.h"
#include "output/CsvReader.h"
#include "output/ExitCode.h"
#include "output/Output.h"
#include "story/SceneSelection.h"
#include "story/StoryReader.h"

namespace zonstory {

namespace {

void PrintLines(const std::string& lines, Output& output) {
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        output.Error(line);
    }
}

// Runs the verb; an error that ends it becomes one line and a code.
int RunVerb(const Invocation& invocation, Output& output) {
    try {
        return invocation.run(output);
    } catch (const zonscreenplay::ReadError& error) {
        output.Error(error.what());
        return kStoryUnread;
    } catch (const SceneSelectionError& error) {
        PrintLines(error.what(), output);
        return kUnmatched;
    } catch (const UsageError& error) {
        output.Error(error.what());
        return kUsage;
    } catch (const CsvError& error) {
        output.Error(error.what());
        return kUsage;
    } catch (const JournalError& error) {
        output.Error(error.what());
        return kNoJournal;
    } catch (const std::bad_alloc&) {
        output.Error("out of memory");
        return kSomeFailed;
    } catch (const std::exception& error) {
        output.Error(error.what());
        return kSomeFailed;
    }
}

int ReportParseOutcome(const CLI::App& program, const CLI::ParseError& outcome, Output& output) {
    if (outcome.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        const bool isVersion = dynamic_cast<const CLI::CallForVersion*>(&outcome) != nullptr;
        output.Result(isVersion ? std::string(outcome.what()) + '\n' : program.help());
        return kDone;
    }
    output.Error(std::string("zonstory: ") + outcome.what());
    output.Note("'zonstory --help' and 'zonstory VERB --help' say more.");
    return kUsage;
}

// The option library takes "[a,b]" apart as a list; "./[a,b]" is the same path and stays whole.
std::vector<std::string> ArgumentsInReverse(int argc, char** argv) {
    std::vector<std::string> arguments;
    for (int index = argc - 1; index > 0; --index) {
        const std::string argument = argv[index];
        const bool isBracketed = argument.size() > 1 && argument.front() == '[' && argument.back() == ']';
        const bool isScene = std::string_view(argv[index - 1]) == "--scene";
        arguments.push_back(isBracketed && !isScene ? "./" + argument : argument);
    }
    return arguments;
}

int ParseAndRun(int argc, char** argv, Output& output) {
    Invocation invocation;
    const std::unique_ptr<CLI::App> program = MakeOptionTree(invocation);
    try {
        program->parse(ArgumentsInReverse(argc, argv)); // the order it asks for
        ApplyConfiguration(*program, invocation.configuration);
    } catch (const ConfigurationError& error) {
        output.Error(error.what());
        return kUsage;
    } catch (const CLI::ParseError& outcome) {
        return ReportParseOutcome(*program, outcome, output);
    }
    output.SetQuiet(invocation.isQuiet);
    output.AllowColor(!invocation.isWithoutColor);
    return RunVerb(invocation, output);
}

} // namespace

int RunProgram(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // a reader that leaves must not kill a run in the middle of a clip
    int exitCode = kDone;
    {
        Output output(stdout, stderr);
        exitCode = ParseAndRun(argc, argv, output);
        if (!output.Finish() && exitCode == kDone) {
            exitCode = kSomeFailed;
        }
    }
    if (const int number = ReceivedSignal()) {
        std::signal(number, SIG_DFL);
        std::raise(number);
    }
    return exitCode;
}

} // namespace zonstory

#include "commands/Convert.h"

#include <filesystem>
#include <functional>

#include <fmt/format.h>

#include "commands/UsageError.h"
#include "files/AtomicFile.h"
#include "output/ExitCode.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

using WriteStory = std::function<std::string(const Story&)>;

WriteStory WriterFor(const std::string& target) {
    const std::string ending = fs::path(target).extension().string();
    if (ending == ".skrx") {
        return [](const Story& story) { return zonscreenplay::WriteStoryFile(*story.root); };
    }
    if (ending == ".fountain" || ending == ".spmd" || ending == ".txt") {
        return &zonscreenplay::WriteFountain;
    }
    throw UsageError(target + ": the name must end in .skrx, .fountain, .spmd or .txt");
}

bool IsSameFile(const std::string& left, const std::string& right) {
    std::error_code error; // of a file that is not there
    return fs::equivalent(left, right, error);
}

} // namespace

int RunConvert(const ConvertOptions& options, Output& output) {
    const WriteStory write = WriterFor(options.target);
    if (IsSameFile(options.story.path, options.target)) {
        throw UsageError(options.target + ": is the screenplay itself");
    }
    const Story story = ReadStory(options.story);
    WriteFileAtomically(options.target, write(story));
    output.Result(options.target + '\n');
    if (!story.warnings.empty()) {
        output.Note(fmt::format("{} remarks of the reader; 'zonstory check' has them", story.warnings.size()));
    }
    return kDone;
}

} // namespace zonstory

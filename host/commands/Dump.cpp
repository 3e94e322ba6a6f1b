#include "commands/Dump.h"

#include <optional>
#include <vector>

#include <sys/stat.h>

#include <zonstoryparser/Story.h>

#include "commands/Toolkit.h"
#include "files/FileIdentity.h"
#include "output/ExitCode.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

// Nothing where there is no file. A new file may get the old one's number, but not its time.
std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? std::optional(zonstory::IdentityOf(status)) : std::nullopt;
}

struct DumpFile {
    std::string path;
    std::optional<FileIdentity> before;
};

std::vector<DumpFile> DueFiles(const zonstoryparser::Talewright& story) {
    std::vector<DumpFile> files;
    for (const zoncore::UString& due : zonstoryparser::TraversalFiles(story)) {
        std::string path = zoncore::UTF16to8(due);
        const auto before = IdentityOf(path);
        files.push_back({std::move(path), before});
    }
    return files;
}

} // namespace

int RunDump(const DumpOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const std::vector<DumpFile> files = DueFiles(*story.root);
    const Toolkit toolkit;
    zoncore::UString report;
    zonstoryparser::TraverseStory(story.root, report);
    output.Result(SafeLines(zoncore::UTF16to8(report)) + '\n');

    int exitCode = kDone;
    for (const DumpFile& file : files) {
        const auto after = IdentityOf(file.path);
        if (after && after != file.before) {
            output.Result(file.path + '\n');
        } else {
            output.Error(file.path + ": could not be written");
            exitCode = kSomeFailed;
        }
    }
    return exitCode;
}

} // namespace zonstory

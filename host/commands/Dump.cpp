#include "commands/Dump.h"

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include <fmt/format.h>
#include <sys/stat.h>

#include <zoncore/FileSupport.h>
#include <zonstoryparser/Story.h>

#include "commands/Toolkit.h"
#include "files/FileIdentity.h"
#include "output/ExitCode.h"
#include "output/SafeText.h"
#include "story/PacketRule.h"

namespace zonstory {

namespace {

using zonstoryparser::Section;

// Nothing where there is no file. A new file may get the old one's number, but not its time.
std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? std::optional(zonstory::IdentityOf(status)) : std::nullopt;
}

struct DumpFile {
    std::string path;
    std::optional<FileIdentity> before;
};

// The traversal makes at most one file of a scene, and counts scenes from 1 in every section.
void CollectDueScenes(const Section* section, std::set<std::size_t>& numbers) {
    if (section == nullptr) {
        return;
    }
    std::size_t number = 0;
    for (const auto& scene : section->scenes) {
        ++number;
        if (!WhyNoPacket(*scene)) {
            numbers.insert(number);
        }
    }
}

std::vector<DumpFile> DueFiles(const zonstoryparser::Talewright& story) {
    std::set<std::size_t> numbers;
    if (story.document) {
        CollectDueScenes(story.document->body ? story.document->body->section.get() : nullptr, numbers);
        for (const auto& comments : story.document->commentStreams) {
            CollectDueScenes(comments->section.get(), numbers);
        }
    }
    const zoncore::Dir stem(zoncore::Dir::TempDir(), u"exoTestXMPBufferDumpFile");
    const std::string prefix = zoncore::UTF16to8(stem.FullPath());
    std::vector<DumpFile> files;
    for (const std::size_t number : numbers) {
        std::string path = fmt::format("{}_Scene_{}_Shot_1.txt", prefix, number);
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

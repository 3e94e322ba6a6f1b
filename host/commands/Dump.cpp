#include "commands/Dump.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <vector>

#include <fmt/format.h>
#include <sys/stat.h>

#include <zoncore/FileSupport.h>
#include <zonstoryparser/Story.h>

#include "commands/Toolkit.h"
#include "output/ExitCode.h"
#include "output/SafeText.h"
#include "story/PacketRule.h"

namespace zonstory {

namespace {

using zonstoryparser::Section;

// What tells one file from another that took its name. A new file may get the old one's number, but not its time.
struct FileStamp {
    bool exists = false;
    std::uint64_t number = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

FileStamp StampOf(const std::string& path) {
    struct stat info = {};
    if (lstat(path.c_str(), &info) != 0) {
        return {};
    }
    return {true, info.st_ino, info.st_ctim.tv_sec, info.st_ctim.tv_nsec};
}

struct DumpFile {
    std::string path;
    FileStamp before;
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
        const FileStamp before = StampOf(path);
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
        const FileStamp after = StampOf(file.path);
        if (after.exists && after != file.before) {
            output.Result(file.path + '\n');
        } else {
            output.Error(file.path + ": could not be written");
            exitCode = kSomeFailed;
        }
    }
    return exitCode;
}

} // namespace zonstory

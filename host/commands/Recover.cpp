#include "commands/Recover.h"

#include <algorithm>
#include <filesystem>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "clip/Leftovers.h"
#include "files/FileError.h"
#include "files/SystemError.h"
#include "output/ExitCode.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

class Recovery {
public:
    Recovery(bool dryRun, Output& output) : mDryRun(dryRun), mOutput(output) {}

    void Search(const fs::path& folder) {
        std::error_code error;
        std::vector<fs::path> folders;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            std::error_code ignored;
            if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
                folders.push_back(entry->path());
            }
        }
        if (error) {
            Fail(folder, SystemErrorText(error.value()));
        }
        std::sort(folders.begin(), folders.end());
        for (const fs::path& inner : folders) {
            if (inner.filename() == kWorkingFolder) {
                Empty(inner);
            } else {
                Search(inner);
            }
        }
    }

    int Finish() {
        mOutput.Note(fmt::format("{} {}, {} in work, {} failed", mRemoved, Word(), mInWork, mFailed));
        return mFailed > 0 ? kSomeFailed : kDone;
    }

private:
    const char* Word() const { return mDryRun ? "would be removed" : "removed"; }

    void Fail(const fs::path& path, const std::string& reason) {
        mOutput.Error(path.string() + ": " + reason);
        ++mFailed;
    }

    void Empty(const fs::path& working) try {
        const FileDescriptor folder(::open(working.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder.IsOpen()) {
            return Fail(working, SystemErrorText());
        }
        for (const Leftover& leftover : RemoveLeftovers(folder, mDryRun)) {
            Report(working / leftover.name, leftover);
        }
        if (!mDryRun) {
            ::rmdir(working.c_str()); // stays while somebody works in it
        }
    } catch (const FileError& error) {
        Fail(working, error.what());
    }

    void Report(const fs::path& path, const Leftover& leftover) {
        if (!leftover.problem.empty()) {
            return Fail(path, leftover.problem);
        }
        if (!leftover.holder.empty()) {
            ++mInWork;
            return mOutput.Note(path.string() + ": in work by " + leftover.holder);
        }
        ++mRemoved;
        mOutput.Result(SafeLine(fmt::format("{}: {}, {} bytes", path.string(), Word(), leftover.size)) + '\n');
    }

    bool mDryRun;
    Output& mOutput;
    std::size_t mRemoved = 0;
    std::size_t mInWork = 0;
    std::size_t mFailed = 0;
};

} // namespace

int RunRecover(const RecoverOptions& options, Output& output) {
    Recovery recovery(options.dryRun, output);
    for (const std::string& folder : options.folders) {
        recovery.Search(folder);
    }
    return recovery.Finish();
}

} // namespace zonstory

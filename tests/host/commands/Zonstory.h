#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/RunProgram.h"
#include "support/TemporaryFolder.h"

/// The program as its users run it: a process of its own, in a folder of its own.
namespace support {

struct ZonstoryResult {
    int exitCode = -1; ///< -1 when a signal ended it.
    int signal = 0;
    std::string out;
    std::string err;
};

class Zonstory {
public:
    Zonstory() {
        WriteFile(mStreams / "in", "");
        WriteFile(mStreams / "out", "");
    }

    /// The folder that the program runs in, where tests put stories and clips.
    const std::filesystem::path& Folder() const { return mFolder.Path(); }
    std::filesystem::path operator/(const std::string& name) const { return mFolder / name; }

    /// @param arguments  In any bytes.
    ZonstoryResult Run(const std::vector<std::string>& arguments, const std::string& standardInput = "") const {
        WriteFile(mStreams / "in", standardInput);
        return Wait(Start(arguments));
    }

    /// A run that goes on while the test does something else.
    /// @param results  The file that its results go to; empty for what Wait() returns.
    RunningProgram Start(const std::vector<std::string>& arguments, const std::string& results = "") const {
        const std::string out = results.empty() ? (mStreams / "out").string() : results;
        const std::string script =
            R"(cd "$0" && streams=$1 out=$2 && shift 2 && exec "$@" <"$streams/in" >"$out" 2>"$streams/err")";
        std::vector<std::string> words = {"sh", "-c", script, Folder(), mStreams.Path(), out, ZONSTORY};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return RunningProgram(words, {"TMPDIR=" + Folder().native(), "XDG_CONFIG_HOME=" + Folder().native(),
                                      "XDG_STATE_HOME=" + mState.Path().native()});
    }

    ZonstoryResult Wait(RunningProgram program) const {
        const ProgramResult ended = program.Wait();
        return {ended.exitCode, ended.signal, ReadFile(mStreams / "out"), ReadFile(mStreams / "err")};
    }

private:
    TemporaryFolder mFolder;
    TemporaryFolder mStreams;
    TemporaryFolder mState; // where runs are recorded
};

} // namespace support

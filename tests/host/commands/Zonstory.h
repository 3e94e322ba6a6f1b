#pragma once

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

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
    /// The folder that the program runs in, where tests put stories and clips.
    const std::filesystem::path& Folder() const { return mFolder.Path(); }
    std::filesystem::path operator/(const std::string& name) const { return mFolder / name; }

    /// @param arguments  In any bytes: there is no shell between.
    ZonstoryResult Run(const std::vector<std::string>& arguments, const std::string& standardInput = "") const;

    /// Runs it with its results going to a file of the caller's.
    ZonstoryResult RunInto(const std::string& results, const std::vector<std::string>& arguments) const;

    /// @name A run that goes on while the test does something else
    /// @{
    pid_t Start(const std::vector<std::string>& arguments) const;
    bool HasEnded(pid_t process) const;
    ZonstoryResult Wait(pid_t process) const;
    /// @}

private:
    pid_t Start(const std::string& results, const std::vector<std::string>& arguments) const;

    TemporaryFolder mFolder;
    TemporaryFolder mStreams;
};

} // namespace support

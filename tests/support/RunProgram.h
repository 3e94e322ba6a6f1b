#pragma once

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace support {

struct ProgramResult {
    int exitCode = -1; ///< -1 when a signal ended it.
    int signal = 0;
    std::string output; ///< Both streams, as they come.
};

/// A program that runs until it is waited for.
class RunningProgram {
public:
    /// @param words        The program, found along PATH, and its arguments, in any bytes: there is no shell between.
    /// @param environment  "NAME=value" each, added to this process's own.
    RunningProgram(const std::vector<std::string>& words, const std::vector<std::string>& environment = {}) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error("cannot make a pipe");
        }
        std::vector<char*> arguments;
        for (const std::string& word : words) {
            arguments.push_back(const_cast<char*>(word.c_str()));
        }
        arguments.push_back(nullptr);
        mProcess = ::fork();
        if (mProcess == 0) {
            for (const std::string& setting : environment) {
                ::putenv(const_cast<char*>(setting.c_str()));
            }
            ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
            ::dup2(ends[1], STDOUT_FILENO);
            ::dup2(ends[1], STDERR_FILENO);
            ::execvp(arguments[0], arguments.data());
            ::_exit(127);
        }
        ::close(ends[1]);
        mOutput = ends[0];
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram(RunningProgram&& other) noexcept
        : mProcess(std::exchange(other.mProcess, -1)), mOutput(std::exchange(other.mOutput, -1)) {}
    ~RunningProgram() {
        if (mProcess > 0) {
            Wait();
        }
    }

    /// Until a signal has stopped it, or it has ended.
    void WaitUntilStopped() const {
        siginfo_t what{};
        ::waitid(P_PID, static_cast<id_t>(mProcess), &what, WSTOPPED | WEXITED | WNOWAIT);
    }

    bool HasEnded() const {
        siginfo_t what{};
        return ::waitid(P_PID, static_cast<id_t>(mProcess), &what, WEXITED | WNOHANG | WNOWAIT) != 0 ||
               what.si_pid != 0;
    }

    void Send(int signal) const { ::kill(mProcess, signal); }

    ProgramResult Wait() {
        ProgramResult result;
        char bytes[4096];
        for (ssize_t got = 0; (got = ::read(mOutput, bytes, sizeof bytes)) > 0;) {
            result.output.append(bytes, static_cast<std::size_t>(got));
        }
        ::close(mOutput);
        int status = 0;
        ::waitpid(std::exchange(mProcess, -1), &status, 0);
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        return result;
    }

private:
    pid_t mProcess = -1;
    int mOutput = -1;
};

inline ProgramResult RunProgram(const std::vector<std::string>& words,
                                const std::vector<std::string>& environment = {}) {
    return RunningProgram(words, environment).Wait();
}

} // namespace support

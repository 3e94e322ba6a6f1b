#include "Zonstory.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

ZonstoryResult Zonstory::Run(const std::vector<std::string>& arguments, const std::string& standardInput) const {
    WriteFile(mStreams / "in", standardInput);
    return Wait(Start(mStreams / "out", arguments));
}

ZonstoryResult Zonstory::RunInto(const std::string& results, const std::vector<std::string>& arguments) const {
    WriteFile(mStreams / "in", "");
    WriteFile(mStreams / "out", "");
    return Wait(Start(results, arguments));
}

pid_t Zonstory::Start(const std::vector<std::string>& arguments) const {
    WriteFile(mStreams / "in", "");
    return Start(mStreams / "out", arguments);
}

bool Zonstory::HasEnded(pid_t process) const {
    siginfo_t info = {};
    return ::waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid != 0;
}

ZonstoryResult Zonstory::Wait(pid_t process) const {
    int status = 0;
    ::waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
            ReadFile(mStreams / "out"), ReadFile(mStreams / "err")};
}

pid_t Zonstory::Start(const std::string& results, const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {ZONSTORY};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const std::string in = mStreams / "in";
    const std::string err = mStreams / "err";
    const std::string folder = mFolder.Path();
    const std::string temporary = "TMPDIR=" + folder;
    const pid_t process = ::fork();
    if (process == 0) {
        ::putenv(const_cast<char*>(temporary.c_str()));
        ::dup2(::open(in.c_str(), O_RDONLY), STDIN_FILENO);
        ::dup2(::open(results.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        if (::chdir(folder.c_str()) == 0) {
            ::execv(pointers[0], pointers.data());
        }
        ::_exit(127);
    }
    return process;
}

} // namespace support
